#pragma once

#include <string>

/// Where an assertion stands in the source.
struct SourceLine {
    std::string file;
    int number;
};

/// Ends the run unless `holds`: writes " -> " + message + ", in file: " + file + " on line " + number + ",
/// version " + tag to `std::cerr`. An empty message gives way to the text of the condition.
/// @throws BaseException the condition does not hold.
void assertThat(bool holds, const std::string& conditionText, const std::string& message,
                const SourceLine& place);
