# Writes the C++ source that holds the templates: cmake -DOUTPUT=FILE -P embed_templates.cmake -- FILE...
#
# A part of a literal is kept below what compilers must accept; parts side by side are one literal.

set(entries "")
set(is_file FALSE)
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(number RANGE ${last})
    set(argument "${CMAKE_ARGV${number}}")
    if(is_file)
        file(READ "${argument}" text)
        cmake_path(GET argument FILENAME name)
        string(LENGTH "${text}" length)
        set(literals "")
        set(begin 0)
        while(begin LESS length)
            string(SUBSTRING "${text}" ${begin} 8000 part)
            string(APPEND literals "\n     R\"~~~(${part})~~~\"")
            math(EXPR begin "${begin} + 8000")
        endwhile()
        string(APPEND entries "    {\"${name}\",${literals}},\n")
    elseif(argument STREQUAL "--")
        set(is_file TRUE)
    endif()
endforeach()

file(
    WRITE
    "${OUTPUT}"
    "#include \"tools/reference/templates.hpp\"

#include <stdexcept>
#include <string>

namespace reference {

namespace {

struct Template {
    std::string_view name;
    std::string_view text;
};

constexpr Template all[] = {
${entries}};

} // namespace

std::string_view templateText(std::string_view name) {
    for (const Template& entry : all) {
        if (entry.name == name) {
            return entry.text;
        }
    }
    throw std::runtime_error(std::string(name) + \": there is no such template.\");
}

} // namespace reference
"
)
