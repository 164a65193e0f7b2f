// The effective-length records that code modules hand on.

#include <cmath>
#include <limits>
#include <map>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "keltrix/steel/MemberLayout.h"

using Keltrix::Steel::SubspanEffectiveLengthData;
using Entry = SubspanEffectiveLengthData::Entry;

namespace {

Entry OneEntry() { return {1, 3, 2.0, 8.5, 6.0, 0.04}; }

std::map<int, Entry> Table(int key, double length) { return {{key, Entry(0, 1, 0.0, length, length, 0.05)}}; }

SubspanEffectiveLengthData Tables() { return {Table(3, 1.0), Table(2, 2.0), Table(1, 3.0)}; }

} // namespace

static_assert(sizeof(Entry) == 2 * sizeof(std::size_t) + 4 * sizeof(double));
static_assert(sizeof(SubspanEffectiveLengthData) == 3 * sizeof(std::map<int, Entry>));
static_assert(std::is_move_assignable_v<Entry> && std::is_copy_assignable_v<Entry>);
static_assert(std::is_move_constructible_v<SubspanEffectiveLengthData>);

TEST(EffectiveLengthEntry, KeepsItsSixValuesInOrder)
{
    const Entry entry = OneEntry();
    EXPECT_EQ(entry.GetSubspanStartIndex(), 1U);
    EXPECT_EQ(entry.GetSubspanEndIndex(), 3U);
    EXPECT_EQ(entry.GetStartPosition(), 2.0);
    EXPECT_EQ(entry.GetEndPosition(), 8.5);
    EXPECT_EQ(entry.GetEffectiveLength(), 6.0);
    EXPECT_EQ(entry.GetRadiusOfGyration(), 0.04);
}

TEST(EffectiveLengthEntry, DerivesLengthAndSlenderness)
{
    EXPECT_EQ(OneEntry().GetSpanLength(), 6.5);
    EXPECT_DOUBLE_EQ(OneEntry().GetSlendernessRatio(), 150.0);
    EXPECT_EQ(Entry(0, 0, 5.0, 2.0, 1.0, 1.0).GetSpanLength(), -3.0) << "not checked";
}

TEST(EffectiveLengthEntry, ZeroRadiusIsNotGuarded)
{
    EXPECT_EQ(Entry(0, 0, 0.0, 1.0, 1.0, 0.0).GetSlendernessRatio(), std::numeric_limits<double>::infinity());
    EXPECT_EQ(Entry(0, 0, 0.0, 1.0, -1.0, 0.0).GetSlendernessRatio(), -std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(Entry(0, 0, 0.0, 1.0, 0.0, 0.0).GetSlendernessRatio()));
}

TEST(EffectiveLengthEntry, EqualityIsExactInEveryField)
{
    EXPECT_TRUE(OneEntry() == OneEntry());
    EXPECT_FALSE(OneEntry() == Entry(0, 3, 2.0, 8.5, 6.0, 0.04));
    EXPECT_FALSE(OneEntry() == Entry(1, 4, 2.0, 8.5, 6.0, 0.04));
    EXPECT_FALSE(OneEntry() == Entry(1, 3, 2.0000000001, 8.5, 6.0, 0.04));
    EXPECT_FALSE(OneEntry() == Entry(1, 3, 2.0, 8.5000000001, 6.0, 0.04));
    EXPECT_FALSE(OneEntry() == Entry(1, 3, 2.0, 8.5, 6.0000000001, 0.04));
    EXPECT_FALSE(OneEntry() == Entry(1, 3, 2.0, 8.5, 6.0, 0.0400000001));
    const Entry unset(0, 0, 0.0, 0.0, std::numeric_limits<double>::quiet_NaN(), 1.0);
    EXPECT_FALSE(unset == unset);
}

TEST(EffectiveLengthEntry, IsAssignable)
{
    Entry entry(0, 0, 0.0, 0.0, 0.0, 0.0);
    entry = OneEntry();
    EXPECT_TRUE(entry == OneEntry());
    Entry moved(0, 0, 0.0, 0.0, 0.0, 0.0);
    moved = std::move(entry);
    EXPECT_TRUE(moved == OneEntry());
}

TEST(EffectiveLengthData, KeepsThreeTablesInOrder)
{
    const SubspanEffectiveLengthData data = Tables();
    EXPECT_EQ(data.GetMajorAxisEntries(), Table(3, 1.0));
    EXPECT_EQ(data.GetMinorAxisEntries(), Table(2, 2.0));
    EXPECT_EQ(data.GetLateralTorsionalEntries(), Table(1, 3.0));
    EXPECT_EQ(&data.GetMajorAxisEntries(), &data.GetMajorAxisEntries()) << "given by reference";
}

TEST(EffectiveLengthData, EntriesAreOrderedByTheirKey)
{
    std::map<int, Entry> entries;
    for (const int key : {5, -2, 3})
        entries.emplace(key, OneEntry());
    const SubspanEffectiveLengthData data(entries, {}, {});
    std::vector<int> keys;
    for (const auto& [key, entry] : data.GetMajorAxisEntries())
        keys.push_back(key);
    EXPECT_EQ(keys, (std::vector<int>{-2, 3, 5}));
}

TEST(EffectiveLengthData, TablesThatAreMovedInAreLeftEmpty)
{
    std::map<int, Entry> major = Table(1, 1.0);
    std::map<int, Entry> minor = Table(2, 2.0);
    std::map<int, Entry> lateral = Table(3, 3.0);
    const SubspanEffectiveLengthData data(std::move(major), std::move(minor), lateral);
    EXPECT_TRUE(major.empty());
    EXPECT_TRUE(minor.empty());
    EXPECT_EQ(lateral, Table(3, 3.0)) << "copied, because it was not moved";
    EXPECT_EQ(data.GetMinorAxisEntries(), Table(2, 2.0));
}

TEST(EffectiveLengthData, CopiesAndMovesTheTables)
{
    SubspanEffectiveLengthData data = Tables();
    SubspanEffectiveLengthData copy(data);
    EXPECT_EQ(copy.GetMajorAxisEntries(), data.GetMajorAxisEntries());
    const SubspanEffectiveLengthData moved(std::move(copy));
    EXPECT_EQ(moved.GetLateralTorsionalEntries(), Table(1, 3.0));
    EXPECT_TRUE(copy.GetLateralTorsionalEntries().empty());

    SubspanEffectiveLengthData assigned({}, {}, {});
    assigned = data;
    EXPECT_EQ(assigned.GetMinorAxisEntries(), Table(2, 2.0));
    EXPECT_EQ(data.GetMinorAxisEntries(), Table(2, 2.0));
    SubspanEffectiveLengthData target({}, {}, {});
    target = std::move(assigned);
    EXPECT_EQ(target.GetMajorAxisEntries(), Table(3, 1.0));
    EXPECT_EQ(target.GetMinorAxisEntries(), Table(2, 2.0));
    EXPECT_EQ(target.GetLateralTorsionalEntries(), Table(1, 3.0));
    EXPECT_TRUE(assigned.GetMajorAxisEntries().empty());
}

TEST(EffectiveLengthData, AssignmentToItselfChangesNothing)
{
    SubspanEffectiveLengthData data = Tables();
    SubspanEffectiveLengthData& self = data;
    data = self;
    EXPECT_EQ(data.GetMajorAxisEntries(), Table(3, 1.0));
    data = std::move(self);
    EXPECT_EQ(data.GetMajorAxisEntries(), Table(3, 1.0));
    EXPECT_EQ(data.GetMinorAxisEntries(), Table(2, 2.0));
    EXPECT_EQ(data.GetLateralTorsionalEntries(), Table(1, 3.0));
}
