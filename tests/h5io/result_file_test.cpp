#include "h5io/result_file.hpp"

#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <type_traits>

namespace {

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

/// A folder that lives as long as the test.
class ResultFile : public testing::Test {
protected:
    void SetUp() override {
        const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
        folder = std::filesystem::path(testing::TempDir()) / (std::string("h5io_") + test->name());
        std::filesystem::create_directories(folder);
        CaptureStderr();
    }
    void TearDown() override {
        EXPECT_EQ(GetCapturedStderr(), "") << "the HDF5 library must not print";
        std::filesystem::remove_all(folder);
    }

    [[nodiscard]] std::string pathOf(const std::string& name) const { return (folder / name).string(); }

private:
    std::filesystem::path folder;
};

std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

template <typename Action>
std::string errorOf(Action action) {
    try {
        action();
    } catch (const h5io::Exception& error) {
        return error.what();
    }
    return "nothing thrown";
}

std::string readText(const std::string& fileName, const std::string& path) {
    const hid_t file = H5Fopen(fileName.c_str(), H5F_ACC_RDONLY, H5P_DEFAULT);
    const hid_t dataset = H5Dopen2(file, path.c_str(), H5P_DEFAULT);
    const hid_t type = H5Dget_type(dataset);
    char* content = nullptr;
    H5Dread(dataset, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, &content);
    std::string text = content == nullptr ? "" : content;
    H5free_memory(content);
    H5Tclose(type);
    H5Dclose(dataset);
    H5Fclose(file);
    return text;
}

TEST(ResultsGroup, hasItsPath) {
    EXPECT_EQ(h5io::resultsGroup, "/RESULTS/");
}

TEST(Exceptions, nameWhatFailed) {
    EXPECT_STREQ(h5io::OpenFileFailed("a.h5").what(), "Opening the HDF5 file at 'a.h5' failed.");
    EXPECT_STREQ(h5io::WriteFailed(".config/model").what(),
                 "Writing the HDF5 dataset '.config/model' failed.");
    EXPECT_STREQ(h5io::CloseFileFailed("a.h5").what(), "Closing the HDF5 file at 'a.h5' failed.");
}

TEST(Exceptions, areOfOneFamily) {
    EXPECT_TRUE((std::is_base_of_v<std::runtime_error, h5io::Exception>));
    EXPECT_TRUE((std::is_base_of_v<h5io::Exception, h5io::OpenFileFailed>));
    EXPECT_TRUE((std::is_base_of_v<h5io::Exception, h5io::WriteFailed>));
    EXPECT_TRUE((std::is_base_of_v<h5io::Exception, h5io::CloseFileFailed>));
}

TEST_F(ResultFile, modeTwoTruncates) {
    EXPECT_EQ(static_cast<unsigned>(H5Easy::File::Truncate), 2U);
}

TEST_F(ResultFile, textIsStoredUnderItsPath) {
    const std::string text = "{\"a\":\"\xC3\xA4\"}";
    H5Easy::File file = h5io::openFile(pathOf("a.h5"), 2);
    h5io::writeDataset(file, ".config/model", text);
    h5io::closeFile(file);
    EXPECT_EQ(readText(pathOf("a.h5"), "/.config/model"), text);
}

TEST_F(ResultFile, textIsOnDiskBeforeTheFileIsClosed) {
    H5Easy::File file = h5io::openFile(pathOf("a.h5"), 2);
    h5io::writeDataset(file, ".config/model", "text that is looked for");
    EXPECT_NE(contentOf(pathOf("a.h5")).find("text that is looked for"), std::string::npos);
    h5io::closeFile(file);
}

TEST_F(ResultFile, existingFileIsReplacedNotAppendedTo) {
    for (const std::string name : {"first", "second"}) {
        H5Easy::File file = h5io::openFile(pathOf("a.h5"), 2);
        h5io::writeDataset(file, name, name);
        h5io::closeFile(file);
    }
    EXPECT_EQ(readText(pathOf("a.h5"), "second"), "second");
    const hid_t file = H5Fopen(pathOf("a.h5").c_str(), H5F_ACC_RDONLY, H5P_DEFAULT);
    EXPECT_EQ(H5Lexists(file, "first", H5P_DEFAULT), 0);
    H5Fclose(file);
}

TEST_F(ResultFile, missingFolderFailsToOpen) {
    const std::string path = pathOf("missing/a.h5");
    EXPECT_EQ(errorOf([&] { static_cast<void>(h5io::openFile(path, 2)); }),
              "Opening the HDF5 file at '" + path + "' failed.");
}

TEST_F(ResultFile, directoryFailsToOpen) {
    EXPECT_THROW(static_cast<void>(h5io::openFile(pathOf(""), 2)), h5io::OpenFileFailed);
}

TEST_F(ResultFile, datasetThatIsThereAlreadyFailsAndIsKept) {
    H5Easy::File file = h5io::openFile(pathOf("a.h5"), 2);
    h5io::writeDataset(file, "x/y", "first");
    EXPECT_EQ(errorOf([&] { h5io::writeDataset(file, "x/y", "second"); }),
              "Writing the HDF5 dataset 'x/y' failed.");
    h5io::closeFile(file);
    EXPECT_EQ(readText(pathOf("a.h5"), "x/y"), "first");
}

TEST_F(ResultFile, fileOpenForReadingOnlyFailsToWrite) {
    H5Easy::File created = h5io::openFile(pathOf("a.h5"), 2);
    h5io::closeFile(created);
    H5Easy::File file = h5io::openFile(pathOf("a.h5"), H5Easy::File::ReadOnly);
    EXPECT_THROW(h5io::writeDataset(file, "x", "text"), h5io::WriteFailed);
    h5io::closeFile(file);
}

TEST_F(ResultFile, closingTwiceIsTold) {
    H5Easy::File file = h5io::openFile(pathOf("a.h5"), 2);
    h5io::closeFile(file);
    EXPECT_THROW(h5io::closeFile(file), h5io::CloseFileFailed);
}

TEST_F(ResultFile, fileLockedByAnotherIsLeftAsItIs) {
    const std::string path = pathOf("a.h5");
    std::ofstream(path) << "precious";
    FILE* const holder = std::fopen(path.c_str(), "r+");
    ASSERT_EQ(flock(fileno(holder), LOCK_EX | LOCK_NB), 0);
    EXPECT_THROW(static_cast<void>(h5io::openFile(path, 2)), h5io::OpenFileFailed);
    EXPECT_EQ(contentOf(path), "precious");
    std::fclose(holder);
    EXPECT_NO_THROW(static_cast<void>(h5io::openFile(path, 2)));
}

// ---- Printing of the library's error stack
// ---------------------------------------------------------------------------

herr_t countPrint(hid_t /*stack*/, void* count) {
    ++*static_cast<int*>(count);
    return 0;
}

/// Sets a printing function of the test's own and puts the library's back at the end.
class OwnPrinting {
public:
    OwnPrinting() {
        H5Eget_auto2(H5E_DEFAULT, &saved, &savedData);
        H5Eset_auto2(H5E_DEFAULT, countPrint, &count);
    }
    OwnPrinting(const OwnPrinting&) = delete;
    OwnPrinting(OwnPrinting&&) = delete;
    OwnPrinting& operator=(const OwnPrinting&) = delete;
    OwnPrinting& operator=(OwnPrinting&&) = delete;
    ~OwnPrinting() { H5Eset_auto2(H5E_DEFAULT, saved, savedData); }

    [[nodiscard]] int prints() const { return count; }
    [[nodiscard]] bool isInPlace() const {
        H5E_auto2_t print = nullptr;
        void* data = nullptr;
        H5Eget_auto2(H5E_DEFAULT, &print, &data);
        return print == countPrint && data == &count;
    }

private:
    H5E_auto2_t saved = nullptr;
    void* savedData = nullptr;
    int count = 0;
};

TEST_F(ResultFile, printingIsOffDuringFailuresAndRestoredAfterThem) {
    const OwnPrinting printing;
    EXPECT_THROW(static_cast<void>(h5io::openFile(pathOf("missing/a.h5"), 2)), h5io::OpenFileFailed);
    EXPECT_TRUE(printing.isInPlace());
    H5Easy::File file = h5io::openFile(pathOf("a.h5"), 2);
    EXPECT_TRUE(printing.isInPlace());
    h5io::writeDataset(file, "x", "text");
    EXPECT_TRUE(printing.isInPlace());
    EXPECT_THROW(h5io::writeDataset(file, "x", "text"), h5io::WriteFailed);
    EXPECT_TRUE(printing.isInPlace());
    h5io::closeFile(file);
    EXPECT_TRUE(printing.isInPlace());
    EXPECT_THROW(h5io::closeFile(file), h5io::CloseFileFailed);
    EXPECT_TRUE(printing.isInPlace());
    EXPECT_EQ(printing.prints(), 0);
}

TEST_F(ResultFile, printingThatWasOffStaysOff) {
    H5E_auto2_t saved = nullptr;
    void* data = nullptr;
    H5Eget_auto2(H5E_DEFAULT, &saved, &data);
    H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);
    EXPECT_THROW(static_cast<void>(h5io::openFile(pathOf("missing/a.h5"), 2)), h5io::OpenFileFailed);
    H5E_auto2_t print = countPrint;
    void* printData = nullptr;
    H5Eget_auto2(H5E_DEFAULT, &print, &printData);
    EXPECT_EQ(print, nullptr);
    H5Eset_auto2(H5E_DEFAULT, saved, data);
}

// ---- Full disk: a limit on file sizes stands in for it
// ----------------------------------------------------------------

/// Runs in a process of its own. Statuses: 0 nothing failed, 1 opening, 2 writing, 3 closing.
[[noreturn]] void writeBelowLimit(const std::string& path, rlim_t limit, std::size_t textSize) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit sizes{limit, limit};
    setrlimit(RLIMIT_FSIZE, &sizes);
    h5io::leaveFilesAloneAtExit();
    try {
        H5Easy::File file = h5io::openFile(path, 2);
        h5io::writeDataset(file, ".config/model", std::string(textSize, 'x'));
        h5io::closeFile(file);
    } catch (const h5io::OpenFileFailed&) {
        std::exit(1);
    } catch (const h5io::WriteFailed&) {
        std::exit(2);
    } catch (const h5io::CloseFileFailed&) {
        std::exit(3);
    }
    std::exit(0);
}

// The child starts anew, so that the library is not in use yet when it is told to leave files alone.
class FullDisk : public testing::Test {
protected:
    void SetUp() override { testing::FLAGS_gtest_death_test_style = "threadsafe"; }
    static std::string path() {
        return testing::TempDir() + "h5io_" + testing::UnitTest::GetInstance()->current_test_info()->name() +
               ".h5";
    }
    void TearDown() override { std::filesystem::remove(path()); }
};

TEST_F(FullDisk, noRoomForTheFirstBytesFailsToOpen) {
    EXPECT_EXIT(writeBelowLimit(path(), 10, 100), testing::ExitedWithCode(1), "^$");
}

TEST_F(FullDisk, noRoomForTheTextFailsToWrite) {
    EXPECT_EXIT(writeBelowLimit(path(), 1000, 100), testing::ExitedWithCode(2), "^$");
    EXPECT_EXIT(writeBelowLimit(path(), 200'000, 1'000'000), testing::ExitedWithCode(2), "^$");
}

TEST_F(FullDisk, enoughRoomSucceeds) {
    EXPECT_EXIT(writeBelowLimit(path(), 2'000'000, 1'000'000), testing::ExitedWithCode(0), "^$");
}

} // namespace
