#include <iostream>
#include <jsv/validate.hpp>
#include <sstream>

int main() {
    std::istringstream data(R"({"width": -1})");
    std::istringstream schema(R"({"properties": {"width": {"minimum": 0}}})");
    return jsv::validate({&std::cout}, data, schema);
}
