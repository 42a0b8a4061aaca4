#include "app/assertion.hpp"

#include <gtest/gtest.h>

#include <string>

#include "api/base_exception.hpp"

namespace {

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

std::string written(bool holds, const std::string& message) {
    CaptureStderr();
    try {
        assertThat(holds, "isReady()", message, {"app/some_file.cpp", 12});
    } catch (const BaseException&) {
        return GetCapturedStderr() + "killed";
    }
    return GetCapturedStderr();
}

TEST(Assertion, isSilentWhereItHolds) {
    EXPECT_EQ(written(true, "never shown"), "");
}

TEST(Assertion, showsMessagePlaceAndVersionAndKills) {
    EXPECT_EQ(
        written(false, "The model is not ready."),
        " -> The model is not ready., in file: app/some_file.cpp on line 12, version v4.2.0-arm64\nkilled");
}

TEST(Assertion, showsTheConditionWhereTheMessageIsEmpty) {
    EXPECT_EQ(written(false, ""),
              " -> isReady(), in file: app/some_file.cpp on line 12, version v4.2.0-arm64\nkilled");
}

} // namespace
