# The interpreter of the test scripts: Python3_EXECUTABLE, one that can read result files with h5py.
#
# The first python3 on the path need not be the one for which the distribution packages h5py and jsonschema.

function(orvante_find_python)
    find_program(path_python python3 NO_CACHE)
    foreach(candidate IN ITEMS "${Python3_EXECUTABLE}" /usr/bin/python3 "${path_python}")
        if(candidate)
            execute_process(
                COMMAND "${candidate}" -c "import h5py, jsonschema"
                RESULT_VARIABLE result
                OUTPUT_QUIET
                ERROR_QUIET
            )
            if(result EQUAL 0)
                set(Python3_EXECUTABLE "${candidate}" CACHE FILEPATH "Interpreter of the test scripts" FORCE)
                return()
            endif()
        endif()
    endforeach()
    message(
        FATAL_ERROR
        "No python3 with the modules h5py and jsonschema: run scripts/install_dependencies.sh, or set Python3_EXECUTABLE."
    )
endfunction()

orvante_find_python()
