#pragma once

#include <tclap/CmdLine.h>

#include <memory>
#include <string>

/// Command line of every program of the framework.
///
/// The constructor prints the start banner and defines the common arguments; the destructor prints the
/// closing banner, which therefore means success: every failure leaves the process without destroying the
/// object.
class OrvanteCmdLine : public TCLAP::CmdLine {
public:
    /// @param message what the program is, shown by `--help`.
    /// @param model the model family that the program serves.
    /// @param tag the program's short name.
    OrvanteCmdLine(const std::string& message, std::string model, std::string tag);
    OrvanteCmdLine(const OrvanteCmdLine&) = delete;
    OrvanteCmdLine(OrvanteCmdLine&&) = delete;
    OrvanteCmdLine& operator=(const OrvanteCmdLine&) = delete;
    OrvanteCmdLine& operator=(OrvanteCmdLine&&) = delete;
    ~OrvanteCmdLine() override;

    /// Value of `--file`.
    [[nodiscard]] std::string configFile() const;
    /// Value of `--log`, the level of debug messages.
    [[nodiscard]] int logLevel() const;
    /// Value of `--nthreads`.
    [[nodiscard]] int numberOfThreads() const;
    /// Value of `--archive`, the archive to restore.
    [[nodiscard]] std::string archive() const;

private:
    void printStartBanner() const;

    // Destroyed from the last to the first.
    std::string modelName;
    std::string binaryTag;
    std::unique_ptr<TCLAP::ValueArg<std::string>> fileArg;
    std::unique_ptr<TCLAP::ValueArg<int>> logArg;
    std::unique_ptr<TCLAP::ValueArg<int>> nthreadsArg;
    std::unique_ptr<TCLAP::ValueArg<std::string>> archiveArg;
};
