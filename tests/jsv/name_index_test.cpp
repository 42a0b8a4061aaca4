#include "jsv/name_index.hpp"

#include <gtest/gtest.h>

#include <deque>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace {

using jsv::Members;
using jsv::MemberScratch;
using jsv::Name;
using jsv::NameIndex;
using nlohmann::json;

TEST(NameIndex, numbersNamesInTheOrderOfTheirComing) {
    NameIndex index;
    const std::string a = "alpha";
    const std::string b = "beta";
    const std::string sameAsA = "alpha";
    EXPECT_EQ(index.add(a).id, 0U);
    EXPECT_EQ(index.add(b).id, 1U);
    EXPECT_EQ(index.add(sameAsA).id, 0U);
    EXPECT_EQ(index.add(sameAsA).text, &a);
    EXPECT_EQ(index.size(), 2U);
}

TEST(NameIndex, emptyOneKnowsNothing) {
    EXPECT_EQ(NameIndex().find("x"), NameIndex::unknown);
}

/// Names of every length that differ in one letter alone, wherever it stands.
std::deque<std::string> similarNames() {
    std::deque<std::string> names = {""};
    for (std::size_t length = 1; length <= 40; ++length) {
        names.emplace_back(length, 'x');
        for (std::size_t position = 0; position < length; ++position) {
            names.emplace_back(length, 'x');
            names.back()[position] = 'y';
        }
    }
    return names;
}

TEST(NameIndex, tellsSimilarNamesApart) {
    const std::deque<std::string> names = similarNames();
    NameIndex index;
    for (std::size_t number = 0; number < names.size(); ++number) {
        ASSERT_EQ(index.find(names[number]), NameIndex::unknown) << names[number];
        ASSERT_EQ(index.add(names[number]).id, number);
    }
    for (std::size_t number = 0; number < names.size(); ++number) {
        EXPECT_EQ(index.find(std::string(names[number])), number);
    }
}

/// A name of a long list, as people number them.
std::string numbered(std::size_t number, const std::string& end) {
    return "bank_region_" + std::to_string(number) + end;
}

TEST(NameIndex, findsEachOfManyNumberedNames) {
    for (const std::string end : {"", "_of_the_upper_reach"}) {
        std::deque<std::string> names;
        NameIndex index;
        for (std::size_t number = 0; number < 50000; ++number) {
            names.push_back(numbered(number, end));
            ASSERT_EQ(index.add(names.back()).id, number);
        }
        for (std::size_t number = 0; number < names.size(); ++number) {
            ASSERT_EQ(index.find(numbered(number, end)), number);
        }
        EXPECT_EQ(index.find(numbered(names.size(), end)), NameIndex::unknown);
    }
}

TEST(NameIndex, nulBytesCount) {
    NameIndex index;
    const std::string without = "ab";
    const std::string with("ab\0", 3);
    EXPECT_NE(index.add(without).id, index.add(with).id);
}

TEST(Members, areFoundByTheirNumbers) {
    NameIndex index;
    MemberScratch scratch;
    const std::string a = "a";
    const std::string c = "c";
    const Name nameA = index.add(a);
    const Name nameC = index.add(c);
    const json datum = {{"a", 1}, {"b", 2}};
    const Members members(index, datum, scratch);
    EXPECT_EQ(members.find(nameA), &datum["a"]);
    EXPECT_FALSE(members.has(nameC));
    ASSERT_EQ(members.size(), 2U);
    EXPECT_EQ(*members[0].name, "a");
    EXPECT_EQ(members[0].id, nameA.id);
    EXPECT_EQ(members[1].value, &datum["b"]);
    EXPECT_EQ(members[1].id, NameIndex::unknown);
}

TEST(Members, takeUpNamesThatComeLater) {
    NameIndex index;
    MemberScratch scratch;
    const json datum = {{"a", 1}};
    Members members(index, datum, scratch);
    const std::string a = "a";
    const Name name = index.add(a);
    members.refresh();
    EXPECT_TRUE(members.has(name));
    EXPECT_EQ(members[0].id, name.id);
    EXPECT_EQ(members.size(), 1U);
}

TEST(Members, ofObjectsInsideEachOtherDoNotMix) {
    NameIndex index;
    MemberScratch scratch;
    const std::string a = "a";
    const Name name = index.add(a);
    const json outerDatum = {{"a", 1}, {"b", 2}};
    const json innerDatum = {{"a", 3}};
    const Members outer(index, outerDatum, scratch);
    {
        const Members inner(index, innerDatum, scratch);
        EXPECT_EQ(*inner.find(name), 3);
        EXPECT_EQ(*outer.find(name), 1);
    }
    EXPECT_EQ(*outer.find(name), 1);
    EXPECT_EQ(*outer[1].name, "b");
    EXPECT_EQ(scratch.members.size(), 2U);
}

TEST(Members, otherDataHaveNone) {
    NameIndex index;
    MemberScratch scratch;
    const json datum = {1, 2};
    EXPECT_EQ(Members(index, datum, scratch).size(), 0U);
}

} // namespace
