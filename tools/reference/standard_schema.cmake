# The schema of the command file in standard drafts, for editors: written by orvante_reference, delivered as files.

set(dialect_text "${PROJECT_BINARY_DIR}/schema/command_file_schema.json")
set(standard_texts "")
foreach(draft IN ITEMS draft-07 2020-12)
    set(standard_text "${PROJECT_BINARY_DIR}/schema/command_file_schema.${draft}.json")
    add_custom_command(
        OUTPUT "${standard_text}"
        COMMAND orvante_reference --standard ${draft} "${dialect_text}" "${standard_text}"
        DEPENDS orvante_reference "${dialect_text}"
        COMMENT "Writing the command-file schema for editors (${draft})"
        VERBATIM
    )
    list(APPEND standard_texts "${standard_text}")
endforeach()
add_custom_target(standard_schemas ALL DEPENDS ${standard_texts})
add_dependencies(standard_schemas orvante_schema)
install(FILES ${standard_texts} DESTINATION "${CMAKE_INSTALL_DATADIR}/orvante" COMPONENT programs)
