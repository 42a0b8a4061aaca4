#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <exception>
#include <string>
#include <type_traits>
#include <vector>

#include "api/base_exception.hpp"
#include "api/command_file_reader.hpp"

namespace {

using Reader = api::ICommandFileReader;

TEST(BaseException, hasItsFixedText) {
    EXPECT_STREQ(BaseException().what(), "... unfortunately ORVANTE is killed!");
}

TEST(BaseException, isAStandardException) {
    EXPECT_TRUE((std::is_convertible_v<BaseException*, std::exception*>));
    EXPECT_TRUE(std::is_default_constructible_v<BaseException>);
}

TEST(CommandFileReader, isAbstractWithVirtualDestructor) {
    EXPECT_TRUE(std::is_abstract_v<Reader>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Reader>);
}

#if defined(__GXX_ABI_VERSION) && defined(__x86_64__)

/// Slot of a virtual operation, the destructor being slot 0. In this C++ ABI a pointer to a virtual member
/// function holds one more than its offset in the table, in which the destructor takes two places.
template <typename Signature>
std::ptrdiff_t slotOf(Signature Reader::*operation) {
    std::ptrdiff_t representation = 0;
    std::memcpy(&representation, &operation, sizeof representation);
    return (representation - 1) / static_cast<std::ptrdiff_t>(sizeof(void*)) - 1;
}

TEST(CommandFileReader, keepsItsThirtySevenSlotsInOrder) {
    EXPECT_EQ(slotOf<std::string() const>(&Reader::getFileName), 1);
    EXPECT_EQ(slotOf<std::string() const>(&Reader::dump), 2);
    EXPECT_EQ(slotOf<bool(const std::vector<std::string>&) const>(&Reader::hasPaths), 3);
    EXPECT_EQ(
        slotOf<std::string(const std::string&, const int&, const std::string&) const>(&Reader::composePath),
        4);
    EXPECT_EQ(slotOf<std::string(const std::string&, const int&, const std::string&, const int&,
                                 const std::string&) const>(&Reader::composePath),
              5);
    EXPECT_EQ(slotOf<std::vector<std::string>(const std::string&) const>(&Reader::getSubBlockNames), 6);
    EXPECT_EQ(slotOf<bool(const std::string&, bool&) const>(&Reader::getBool), 7);
    EXPECT_EQ(slotOf<bool(const std::string&, const bool&) const>(&Reader::getBool), 8);
    EXPECT_EQ(slotOf<int(const std::string&, bool&) const>(&Reader::getInt), 9);
    EXPECT_EQ(slotOf<int(const std::string&, const int&) const>(&Reader::getInt), 10);
    EXPECT_EQ(slotOf<std::vector<int>(const std::string&, bool&) const>(&Reader::getIntVector), 11);
    EXPECT_EQ(
        slotOf<std::vector<int>(const std::string&, const std::vector<int>&) const>(&Reader::getIntVector),
        12);
    EXPECT_EQ(slotOf<std::vector<int>(const std::string&, const int&, const std::string&, bool&) const>(
                  &Reader::getIntVector),
              13);
    EXPECT_EQ(slotOf<double(const std::string&, bool&) const>(&Reader::getDouble), 14);
    EXPECT_EQ(slotOf<double(const std::string&, const double&) const>(&Reader::getDouble), 15);
    EXPECT_EQ(slotOf<std::vector<double>(const std::string&, bool&) const>(&Reader::getDoubleVector), 16);
    EXPECT_EQ(slotOf<std::vector<double>(const std::string&, const std::vector<double>&) const>(
                  &Reader::getDoubleVector),
              17);
    EXPECT_EQ(slotOf<std::string(const std::string&, bool&) const>(&Reader::getString), 18);
    EXPECT_EQ(slotOf<std::string(const std::string&, const std::string&) const>(&Reader::getString), 19);
    EXPECT_EQ(slotOf<std::vector<std::string>(const std::string&, bool&) const>(&Reader::getStringVector),
              20);
    EXPECT_EQ(slotOf<std::vector<std::string>(const std::string&, const std::vector<std::string>&) const>(
                  &Reader::getStringVector),
              21);
    EXPECT_EQ(slotOf<unsigned int(const std::string&, bool&) const>(&Reader::getArraySize), 22);
    EXPECT_EQ(slotOf<unsigned int(const std::string&) const>(&Reader::getArraySize), 23);
    EXPECT_EQ(slotOf<unsigned int(const std::string&, const int&, const std::string&, bool&) const>(
                  &Reader::getArraySize),
              24);
    EXPECT_EQ(
        slotOf<unsigned int(const std::string&, const int&, const std::string&) const>(&Reader::getArraySize),
        25);
    EXPECT_EQ(slotOf<int(const std::string&, const int&, const std::string&, bool&) const>(&Reader::getInt),
              26);
    EXPECT_EQ(
        slotOf<int(const std::string&, const int&, const std::string&, const int&) const>(&Reader::getInt),
        27);
    EXPECT_EQ(
        slotOf<double(const std::string&, const int&, const std::string&, bool&) const>(&Reader::getDouble),
        28);
    EXPECT_EQ(slotOf<double(const std::string&, const int&, const std::string&, const double&) const>(
                  &Reader::getDouble),
              29);
    EXPECT_EQ(slotOf<double(const std::string&, const int&, const std::string&, const int&,
                            const std::string&, bool&) const>(&Reader::getDouble),
              30);
    EXPECT_EQ(slotOf<double(const std::string&, const int&, const std::string&, const int&,
                            const std::string&, const double&) const>(&Reader::getDouble),
              31);
    EXPECT_EQ(slotOf<std::string(const std::string&, const int&, const std::string&, bool&) const>(
                  &Reader::getString),
              32);
    EXPECT_EQ(
        slotOf<std::string(const std::string&, const int&, const std::string&, const std::string&) const>(
            &Reader::getString),
        33);
    EXPECT_EQ(slotOf<std::string(const std::string&, const int&, const std::string&, const int&,
                                 const std::string&, bool&) const>(&Reader::getString),
              34);
    EXPECT_EQ(slotOf<std::string(const std::string&, const int&, const std::string&, const int&,
                                 const std::string&, const std::string&) const>(&Reader::getString),
              35);
    EXPECT_EQ(slotOf<std::vector<double>(const std::string&, const int&, const std::string&, bool&) const>(
                  &Reader::getDoubleVector),
              36);
    EXPECT_EQ(slotOf<std::vector<double>(const std::string&, const int&, const std::string&,
                                         const std::vector<double>&) const>(&Reader::getDoubleVector),
              37);
}

#endif

} // namespace
