#include "app/orvante_main.hpp"

#include <gtest/gtest.h>

#include <csignal>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "api/base_exception.hpp"

namespace {

using testing::ExitedWithCode;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

/// Of command files that hold a depth.
const char* const depthSchema =
    R"({"type": "object", "required": ["depth"], "properties": {"depth": {"type": "number", "minimum": 0}}})";

const std::string killed = " -> ... unfortunately ORVANTE is killed!\n";

/// An application whose steps are recorded and whose job is given by the test.
class Application : public OrvanteMain {
public:
    Application(bool needsFile, std::function<void()> work)
        : OrvanteMain("probe", "MODEL", "tag"), needsCommandFile(needsFile), job(std::move(work)) {}

    std::vector<std::string> steps;
    std::function<void()> whileDefining = [] {};

    void defineArguments() override {
        steps.emplace_back("define");
        whileDefining();
    }
    bool needsCommandFileValidation() override {
        steps.emplace_back("needs");
        return needsCommandFile;
    }
    void runJob() override {
        steps.emplace_back("job");
        job();
    }

private:
    bool needsCommandFile;
    std::function<void()> job;
};

int start(Application& application, std::vector<std::string> arguments,
          const char* schemaText = depthSchema) {
    arguments.insert(arguments.begin(), "program");
    std::vector<char*> argv;
    for (std::string& argument : arguments) {
        argv.push_back(argument.data());
    }
    application.initialise(static_cast<int>(argv.size()), argv.data());
    return application.run(schemaText);
}

/// In a process of its own: the whole life of an application; its status is that of a `main`, and as there
/// nothing catches what escapes.
[[noreturn]] void live(bool needsFile, const std::string& file, const std::function<void()>& job,
                       const char* schemaText = depthSchema) noexcept {
    int status = 0;
    {
        Application application(needsFile, job);
        status = start(application, {"-f", file}, schemaText);
    }
    std::exit(status);
}

/// The whole text, the special characters of regular expressions taken as they are.
std::string exactly(const std::string& text) {
    std::string pattern = "^";
    for (const char letter : text) {
        if (std::strchr("\\^$.|?*+()[]{}", letter) != nullptr) {
            pattern += '\\';
        }
        pattern += letter;
    }
    return pattern + "$";
}

#if defined(__GXX_ABI_VERSION) && defined(__x86_64__)

/// Slot of a virtual operation; in this C++ ABI a pointer to one holds one more than its offset in the table,
/// in which the destructor (slot 0) takes two places.
template <typename Operation>
std::ptrdiff_t slotOf(Operation operation) {
    std::ptrdiff_t representation = 0;
    std::memcpy(&representation, &operation, sizeof representation);
    return (representation - 1) / static_cast<std::ptrdiff_t>(sizeof(void*)) - 1;
}

TEST(Slots, followThoseOfTheLibrarysCommandLine) {
    using Parse = void (TCLAP::CmdLineInterface::*)(int, const char* const*);
    using Add = void (TCLAP::CmdLineInterface::*)(TCLAP::Arg&);
    EXPECT_EQ(slotOf(Add(&TCLAP::CmdLineInterface::add)), 1);
    EXPECT_EQ(slotOf(Parse(&TCLAP::CmdLineInterface::parse)), 5);
    EXPECT_EQ(slotOf(&Application::defineArguments), 16);
    EXPECT_EQ(slotOf(&Application::needsCommandFileValidation), 17);
    EXPECT_EQ(slotOf(&Application::runJob), 18);
}

#endif

TEST(Message, namesTheBinary) {
    CaptureStdout();
    {
        const auto application = std::make_unique<Application>(false, [] {});
        EXPECT_EQ(application->getMessage(), "This is the 'probe' binary of the ORVANTE framework.");
    }
    const std::string printed = GetCapturedStdout();
    EXPECT_EQ(printed.find("ORVANTE v4.2.0 (v4.2.0-arm64)\nMODEL tag binary\n"), 0U);
}

TEST(Run, definesParsesAsksAndWorksInThisOrder) {
    CaptureStdout();
    std::vector<std::string> steps;
    {
        Application application(false, [] {});
        EXPECT_EQ(start(application, {"-f", "not opened"}), 0);
        steps = application.steps;
    }
    GetCapturedStdout();
    EXPECT_EQ(steps, (std::vector<std::string>{"define", "needs", "job"}));
}

TEST(Run, closingBannerFollowsSuccess) {
    CaptureStdout();
    {
        Application application(false, [] { std::cout << "job" << std::endl; });
        EXPECT_EQ(start(application, {"-f", "x"}), 0);
    }
    EXPECT_EQ(GetCapturedStdout(), "ORVANTE v4.2.0 (v4.2.0-arm64)\nMODEL tag binary\njob\n\n" +
                                       std::string(60, '-') +
                                       "\n ORVANTE successfully processed all necessary jobs!\n\n");
}

class Failure : public testing::Test {
protected:
    void SetUp() override { testing::FLAGS_gtest_death_test_style = "threadsafe"; }
};

TEST_F(Failure, baseExceptionAddsTheKilledLine) {
    EXPECT_EXIT(live(false, "x", [] { throw BaseException(); }), ExitedWithCode(1), exactly(killed));
}

TEST_F(Failure, otherExceptionGivesThreeLines) {
    EXPECT_EXIT(live(false, "x", [] { throw std::runtime_error("what happened"); }), ExitedWithCode(1),
                exactly(" -> unhandled exception (actually, this should never happen)\n -> what happened\n" +
                        killed));
}

TEST_F(Failure, exhaustedMemoryIsAnOtherException) {
    EXPECT_EXIT(live(false, "x", [] { throw std::bad_alloc(); }), ExitedWithCode(1),
                exactly(" -> unhandled exception (actually, this should never happen)\n -> std::bad_alloc\n" +
                        killed));
}

TEST_F(Failure, argumentExceptionOfTheJobEndsTheProcessAbnormally) {
    EXPECT_EXIT(live(false, "x", [] { throw TCLAP::ArgException("bad value", "name"); }),
                testing::KilledBySignal(SIGABRT), "^ -> error: bad value for arg Argument: name\n");
}

TEST_F(Failure, argumentExceptionWhileDefiningEndsTheProcessAbnormally) {
    const auto define = []() noexcept {
        Application application(false, [] {});
        application.whileDefining = [] { throw TCLAP::SpecificationException("twice", "name"); };
        start(application, {"-f", "x"});
    };
    EXPECT_EXIT(define(), testing::KilledBySignal(SIGABRT), "^ -> error: twice for arg Argument: name\n");
}

TEST_F(Failure, missingCommandFileIsToldBeforeTheJob) {
    EXPECT_EXIT(live(true, "missing/model.json", [] { std::cerr << "job" << std::endl; }), ExitedWithCode(1),
                exactly(" -> configuration file not found: missing/model.json\n" + killed));
}

TEST_F(Failure, directoryAsCommandFileIsNotFound) {
    EXPECT_EXIT(live(true, ".", [] {}), ExitedWithCode(1),
                exactly(" -> configuration file not found: .\n" + killed));
}

TEST_F(Failure, commandFileIsNotLookedAtWhereItIsNotNeeded) {
    EXPECT_EXIT(live(false, "missing/model.json", [] {}), ExitedWithCode(0), exactly(""));
}

/// What an application tells of a command file and whether it comes to its job.
class Loading : public Failure {
protected:
    void SetUp() override {
        Failure::SetUp();
        // The process of a death test runs the test anew up to the death: the name must be the same there.
        path = testing::TempDir() + "/" + testing::UnitTest::GetInstance()->current_test_info()->name();
    }
    void TearDown() override { std::filesystem::remove(path); }

    void write(const std::string& text) const { std::ofstream(path) << text; }
    /// Standard output without the banners, of a run that must come to its end.
    [[nodiscard]] std::string reportOf(const std::string& text) const {
        write(text);
        CaptureStdout();
        {
            Application application(true, [] { std::cout << "job" << std::endl; });
            EXPECT_EQ(start(application, {"-f", path}), 0);
        }
        const std::string printed = GetCapturedStdout();
        const std::string start = "MODEL tag binary\n";
        const std::size_t begin = printed.find(start) + start.size();
        return printed.substr(begin, printed.find("\n\n---") - begin);
    }

    std::string path;
};

TEST_F(Loading, faultlessFileGoesOnInSilence) {
    EXPECT_EQ(reportOf(R"({"depth": 1.5})"), "job");
}

TEST_F(Loading, warningsAreReportedAndDoNotStop) {
    EXPECT_EQ(reportOf(R"({"depth": 1.5, "dept": 1})"),
              "/dept: Warning: The value of this item will not be used.\n\njob");
}

TEST_F(Loading, errorsStopBeforeTheJob) {
    const auto run = [&] {
        std::cout.rdbuf(std::cerr.rdbuf());
        write(R"({"depth": -1})");
        live(true, path, [] { std::cerr << "job" << std::endl; });
    };
    EXPECT_EXIT(run(), ExitedWithCode(1),
                exactly("ORVANTE v4.2.0 (v4.2.0-arm64)\nMODEL tag binary\n"
                        "/depth: Error: This value must be greater than or equal to 0.000000.\n\n"
                        " -> Terminating ORVANTE due to JSON validation errors.\n" +
                        killed));
}

TEST_F(Loading, whatIsNoJsonIsAnUnhandledException) {
    write(R"({"depth": )");
    EXPECT_EXIT(live(true, path, [] { std::cerr << "job" << std::endl; }), ExitedWithCode(1),
                "^ -> unhandled exception \\(actually, this should never happen\\)\n"
                " -> Parsing the JSON data file failed: .*\n"
                " -> ... unfortunately ORVANTE is killed!\n$");
}

TEST_F(Loading, faultOfTheSchemaIsAnUnhandledException) {
    write(R"({"depth": 1})");
    EXPECT_EXIT(live(
                    true, path, [] { std::cerr << "job" << std::endl; }, R"({"type": "depth"})"),
                ExitedWithCode(1),
                exactly(" -> unhandled exception (actually, this should never happen)\n"
                        " -> /type: The provided type is invalid.\n" +
                        killed));
}

} // namespace
