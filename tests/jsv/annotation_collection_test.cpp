#include "jsv/annotation_collection.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using namespace jsv;

using Filtered = FilteredAnnotationCollection<IssueFilter>;

TEST(ClassTree, isAsDocumented) {
    EXPECT_TRUE(std::is_abstract_v<AbstractAnnotationCollection>);
    EXPECT_TRUE((std::is_base_of_v<AbstractAnnotationCollection, AnnotationCollection>));
    EXPECT_TRUE((std::is_base_of_v<AnnotationCollection, Filtered>));
    EXPECT_TRUE((std::is_base_of_v<IssueFilter, Filtered>));
}

TEST(Order, isByLocationThenKindThenPayload) {
    const std::vector<Annotation> sorted = {
        {Location(), InvalidItem{}},
        {Location({"A"}), ConstMismatch{"a"}},
        {Location({"A"}), ConstMismatch{"b"}},
        {Location({"A"}), EnumMismatch{{"a"}}},
        {Location({"A"}), EnumMismatch{{"a", "b"}}},
        {Location({"A"}), BelowMinimum{-1}},
        {Location({"A"}), BelowMinimum{2}},
        {Location({"A"}), RequiredInMismatch{"a", "z"}},
        {Location({"A"}), RequiredInMismatch{"b", "a"}},
        {Location({"A", "10"}), InvalidItem{}},
        {Location({"A", "2"}), ConstMismatch{"a"}},
        {Location({"B"}), ConstMismatch{"a"}},
    };
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        for (std::size_t j = 0; j < sorted.size(); ++j) {
            EXPECT_EQ(sorted[i] < sorted[j], i < j) << i << " and " << j;
        }
    }
}

TEST(Collection, orderOfCallsHasNoEffectOnTheReport) {
    std::vector<Annotation> annotations;
    for (int number = 0; number < 200; ++number) {
        annotations.push_back(
            {Location({std::to_string(number % 70)}), BelowMinimum{static_cast<double>(number % 90)}});
    }
    std::vector<std::string> reports;
    std::mt19937 random(1);
    for (int round = 0; round < 5; ++round) {
        AnnotationCollection collection;
        for (const Annotation& each : annotations) {
            collection.add(each.location, each.issue);
        }
        EXPECT_TRUE(std::is_sorted(collection.begin(), collection.end()));
        reports.push_back(collection.report());
        std::shuffle(annotations.begin(), annotations.end(), random);
    }
    EXPECT_EQ(std::count(reports.begin(), reports.end(), reports.front()), 5);
}

TEST(Collection, equalFindingsAreKeptOnce) {
    AnnotationCollection collection;
    collection.add(Location({"a"}), MissingRequired{});
    collection.add(Location({"b"}), SuperfluousItem{});
    collection.add(Location({"a"}), MissingRequired{});
    EXPECT_EQ(collection.report(),
              "/a: Error: This item is required but missing.\n/b: Warning: The value of this item will not "
              "be used.\n");
    EXPECT_EQ(collection.count(Severity::Error), 1U);
    EXPECT_EQ(collection.count(Severity::Warning), 1U);
    EXPECT_EQ(collection.count(Severity::Info), 0U);
}

TEST(Collection, unfilteredKeepsTracesAndReportsNothingOfThem) {
    AnnotationCollection collection;
    collection.add(Location({"a"}), MinimumTrace{1});
    EXPECT_EQ(collection.count(Severity::Info), 1U);
    EXPECT_EQ(collection.report(), "");
    EXPECT_TRUE(collection.keepsTraces());
}

TEST(Collection, rootIsWrittenAsSlash) {
    AnnotationCollection collection;
    collection.add(Location(), InvalidItem{});
    EXPECT_EQ(collection.report(), "/: Error: This item is invalid.\n");
}

TEST(Filter, acceptsErrorsAndWarnings) {
    const IssueFilter filter;
    EXPECT_TRUE(filter({Location(), InvalidItem{}}));
    EXPECT_TRUE(filter({Location(), SuperfluousItem{}}));
    EXPECT_FALSE(filter({Location(), AccountedTrace{}}));
}

TEST(FilteredCollection, neverHoldsATrace) {
    Filtered collection;
    AbstractAnnotationCollection& sink = collection;
    sink.add(Location(), AccountedTrace{});
    sink.add(Location(), MinimumTrace{1});
    sink.add(Location(), InvalidItem{});
    EXPECT_EQ(std::distance(collection.begin(), collection.end()), 1);
    EXPECT_FALSE(collection.keepsTraces());
}

} // namespace
