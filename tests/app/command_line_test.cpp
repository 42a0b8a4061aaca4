#include "app/orvante_cmd_line.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

const std::string startBanner = "ORVANTE v4.2.0 (v4.2.0-arm64)\nORVAMD setup binary\n";
const std::string closingBanner =
    "\n------------------------------------------------------------\n"
    " ORVANTE successfully processed all necessary jobs!\n\n";

std::unique_ptr<OrvanteCmdLine> quietly(std::unique_ptr<OrvanteCmdLine> (*make)()) {
    CaptureStdout();
    auto made = make();
    GetCapturedStdout();
    return made;
}

std::unique_ptr<OrvanteCmdLine> make() {
    return std::make_unique<OrvanteCmdLine>("message", "ORVAMD", "setup");
}

class CommandLine : public testing::Test {
protected:
    void TearDown() override {
        CaptureStdout();
        line.reset();
        GetCapturedStdout();
    }

    void parse(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "program");
        line->parse(arguments);
    }

    std::unique_ptr<OrvanteCmdLine> line = quietly(make);
};

TEST(Banners, startIsPrintedOnConstructionAndEndOnDestruction) {
    CaptureStdout();
    auto line = make();
    EXPECT_EQ(GetCapturedStdout(), startBanner);
    CaptureStdout();
    line.reset();
    EXPECT_EQ(GetCapturedStdout(), closingBanner);
}

TEST(ClassTree, isTheLibrarysCommandLine) {
    EXPECT_TRUE((std::is_convertible_v<OrvanteCmdLine*, TCLAP::CmdLine*>));
    EXPECT_TRUE((std::is_convertible_v<OrvanteCmdLine*, TCLAP::CmdLineInterface*>));
}

TEST_F(CommandLine, handsItsMessageAndVersionToTheLibrary) {
    EXPECT_EQ(line->getMessage(), "message");
    EXPECT_EQ(line->getVersion(), "v4.2.0-arm64");
    EXPECT_EQ(line->getDelimiter(), ' ');
    EXPECT_TRUE(line->hasHelpAndVersion());
}

TEST_F(CommandLine, definesTheCommonArguments) {
    struct Expected {
        std::string flag;
        std::string name;
        std::string description;
        std::string shortId;
        bool required;
    };
    // The library lists the last added argument first.
    const std::vector<Expected> expected = {
        {"a", "archive", "restore the archive", "[-a <string>]", false},
        {"n", "nthreads", "number of threads", "[-n <int>]", false},
        {"l", "log", "level of debug messages", "[-l <int>]", false},
        {"f", "file", "(required)  the configuration file", "-f <string>", true},
    };
    auto argument = line->getArgList().begin();
    for (const Expected& each : expected) {
        SCOPED_TRACE(each.name);
        EXPECT_EQ((*argument)->getFlag(), each.flag);
        EXPECT_EQ((*argument)->getName(), each.name);
        EXPECT_EQ((*argument)->getDescription(), each.description);
        EXPECT_EQ((*argument)->shortID(), each.shortId);
        EXPECT_EQ((*argument)->isRequired(), each.required);
        EXPECT_TRUE((*argument)->isValueRequired());
        ++argument;
    }
}

TEST_F(CommandLine, valuesHaveTheirDefaults) {
    parse({"-f", "model.json"});
    EXPECT_EQ(line->configFile(), "model.json");
    EXPECT_EQ(line->logLevel(), 0);
    EXPECT_EQ(line->numberOfThreads(), 1);
    EXPECT_EQ(line->archive(), "");
}

TEST_F(CommandLine, valuesAreTakenFromShortAndLongNames) {
    parse({"--file", "a b.json", "--log", "2", "-n", "8", "--archive", "old"});
    EXPECT_EQ(line->configFile(), "a b.json");
    EXPECT_EQ(line->logLevel(), 2);
    EXPECT_EQ(line->numberOfThreads(), 8);
    EXPECT_EQ(line->archive(), "old");
}

} // namespace
