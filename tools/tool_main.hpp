#pragma once

#include <tclap/CmdLine.h>

#include <exception>
#include <string>

/// Does a tool's work and turns whatever ends it into a status.
/// @param run the work, which parses the command line without the library's own handling of exceptions; its
/// result is the status.
/// @param fail tells a message and gives the status of a failure.
/// @param usage the tool's name and arguments, told where the command line is wrong.
template <typename Run, typename Fail>
int toolMain(Run run, Fail fail, const std::string& usage) {
    try {
        return run();
    } catch (const TCLAP::ExitException& end) { // --help and --version
        return end.getExitStatus();
    } catch (const TCLAP::ArgException& fault) {
        return fail(fault.error() + "; usage: " + usage);
    } catch (const std::exception& failure) {
        return fail(failure.what());
    }
}
