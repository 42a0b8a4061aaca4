#pragma once

#include <string>

#include "app/orvante_cmd_line.hpp"

/// Frame of every program of the framework: start-up, run sequence, and the catching of every failure at the
/// top.
///
/// The entry function constructs the concrete application, calls `initialise` and returns what `run` returns.
class OrvanteMain : public OrvanteCmdLine {
public:
    /// @param binaryName the name in "This is the '...' binary of the ORVANTE framework."
    /// @param model the model family, @param tag the short name: both as `OrvanteCmdLine` takes
    /// them.
    OrvanteMain(const char* binaryName, const char* model, const char* tag);

    /// Defines the program's arguments and parses the command line. `--help`, `--version` and parse errors
    /// end the process here.
    /// @throws BaseException an argument is at fault in a way that parsing does not handle itself; meant to
    /// end the process.
    void initialise(int argc, char** argv);

    /// Loads the command file where the program needs one and runs the job.
    ///
    /// A failure is told on `std::cerr` and ends the process with status 1.
    /// @param schemaText the schema that the command file must obey; not used by programs that need no
    /// command file.
    /// @return 0
    /// @throws BaseException the job met a faulty argument; meant to end the process.
    int run(const char* schemaText);

protected:
    /// Adds the program's own arguments to the command line.
    virtual void defineArguments() = 0;
    /// Whether the command file is to be loaded before the job.
    virtual bool needsCommandFileValidation() = 0;
    /// The program's work.
    virtual void runJob() = 0;

private:
    /// Validates the command file; the report goes to `std::cout`.
    /// @throws BaseException the file cannot be opened, after the line " -> configuration file not found: " +
    /// path, or has errors, after " -> Terminating ORVANTE due to JSON validation errors.".
    /// @throws std::runtime_error of `jsv::validate`: the file is no JSON, or the schema is at fault.
    static void loadCommandFile(const std::string& path, const char* schemaText);
};
