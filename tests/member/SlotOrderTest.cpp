// The order of the virtual operations of the member classes. Compiled design-code modules call them by place, so a
// change of order breaks them without any message.
//
// Under the Itanium C++ ABI a pointer to a virtual member function holds one more than the byte offset of the
// function's entry (on ARM the offset itself, with the mark in the adjustment). A virtual destructor takes two entries,
// so that what follows it in the table of operations stands one entry further on.

#include "support/ConcreteMember.h"

#include <cstddef>
#include <cstring>

#include <gtest/gtest.h>

#if !defined(_MSC_VER)

using namespace Keltrix;
using namespace Keltrix::Steel;
using namespace Keltrix::Steel::Test;

namespace {

struct MemberFunctionPointer {
    std::ptrdiff_t pointer;
    std::ptrdiff_t adjustment;
};

template <class Function>
int Entry(Function function)
{
    static_assert(sizeof(Function) == sizeof(MemberFunctionPointer));
    MemberFunctionPointer parts{};
    std::memcpy(&parts, &function, sizeof parts);
#if defined(__aarch64__) || defined(__arm__)
    EXPECT_EQ(parts.adjustment, 1) << "not a virtual operation of the first base";
    return static_cast<int>(parts.pointer / static_cast<std::ptrdiff_t>(sizeof(void*)));
#else
    EXPECT_EQ(parts.pointer & 1, 1) << "not a virtual operation";
    EXPECT_EQ(parts.adjustment, 0) << "not an operation of the first base";
    return static_cast<int>((parts.pointer - 1) / static_cast<std::ptrdiff_t>(sizeof(void*)));
#endif
}

/// Place in the table of operations, which counts the destructor, of place 1, once.
template <class Function>
int Slot(Function function)
{
    const int entry = Entry(function);
    return entry == 0 ? 0 : entry - 1;
}

template <class Member>
void ExpectSlotsZeroToThirtySix()
{
    EXPECT_EQ(Entry(&Member::Clone), 0);
    EXPECT_EQ(Entry(&Member::Category), 3) << "the destructor's two entries come between";
    EXPECT_EQ(Slot(&Member::Category), 2);
    EXPECT_EQ(Slot(&Member::SetDesOpt), 3);
    EXPECT_EQ(Slot(&Member::DesOpt), 4);
    EXPECT_EQ(Slot(&Member::NumDesOpt), 5);
    EXPECT_EQ(Slot(&Member::DesOptName), 6);
    EXPECT_EQ(Slot(&Member::PrepareInput), 7);
    EXPECT_EQ(Slot(&Member::SetKeltrixSec), 8);
    EXPECT_EQ(Slot(&Member::GetKeltrixSec), 9);
    EXPECT_EQ(Slot(&Member::SetGrade), 10);
    EXPECT_EQ(Slot(&Member::GetGrade), 11);
    EXPECT_EQ(Slot(&Member::CheckLocal), 12);
    EXPECT_EQ(Slot(&Member::CheckBuckling), 13);
    EXPECT_EQ(Slot(&Member::Check), 14);
    EXPECT_EQ(Slot(&Member::SetResult), 15);
    EXPECT_EQ(Slot(&Member::SetMemberPointVec), 16);
    EXPECT_EQ(Slot(&Member::SetSubSpanVec), 17);
    EXPECT_EQ(Slot(&Member::SetTitle), 18);
    EXPECT_EQ(Slot(&Member::SetQuickCheckMode), 19);
    EXPECT_EQ(Slot(&Member::GetMemberPointVec), 20);
    EXPECT_EQ(Slot(&Member::GetSubSpanVec), 21);
    EXPECT_EQ(Slot(&Member::GetTitle), 22);
    EXPECT_EQ(Slot(&Member::Length), 23);
    EXPECT_EQ(Slot(&Member::SetLengthOverride), 24);
    EXPECT_EQ(Slot(&Member::SetLyy), 25);
    EXPECT_EQ(Slot(&Member::SetLzz), 26);
    EXPECT_EQ(Slot(&Member::SetLlt), 27);
    EXPECT_EQ(Slot(&Member::SetNumSubSpansUser), 28);
    EXPECT_EQ(Slot(&Member::SetEquivalentUniformMomentFactor), 29);
    EXPECT_EQ(Slot(&Member::SetMomentAmplificationFactorStrongAxis), 30);
    EXPECT_EQ(Slot(&Member::SetMomentAmplificationFactorWeakAxis), 31);
    using Read = bool (Member::*)(const CString&, CSteelGrade&);
    using Write = CString (Member::*)(CSteelGrade&);
    EXPECT_EQ(Slot(static_cast<Read>(&Member::CSVInputData)), 32);
    EXPECT_EQ(Slot(static_cast<Write>(&Member::CSVInputData)), 33);
    EXPECT_EQ(Slot(&Member::GetEffectiveLengths), 34);
    EXPECT_EQ(Slot(&Member::GetSectionText), 35);
    EXPECT_EQ(Slot(&Member::SectionClass), 36);
}

/// Their first own operation follows the last one of the base.
class OneMoreThanSteelMember : public CSteelMember {
public:
    virtual void OneMore() = 0;
};
class OneMoreThanGenericMember : public CSteelMemberGen {
public:
    virtual void OneMore() = 0;
};

} // namespace

TEST(SlotOrder, OfTheAbstractMember)
{
    ExpectSlotsZeroToThirtySix<CSteelMember>();
    EXPECT_EQ(Slot(&OneMoreThanSteelMember::OneMore), 37);
}

TEST(SlotOrder, OfTheGenericMember)
{
    ExpectSlotsZeroToThirtySix<CSteelMemberGen>();
    EXPECT_EQ(Slot(&CSteelMemberGen::LengthOverride), 37);
    EXPECT_EQ(Slot(&CSteelMemberGen::Lyy), 38);
    EXPECT_EQ(Slot(&CSteelMemberGen::Lzz), 39);
    EXPECT_EQ(Slot(&CSteelMemberGen::Llt), 40);
    EXPECT_EQ(Slot(&CSteelMemberGen::NumSubSpansUser), 41);
    EXPECT_EQ(Slot(&OneMoreThanGenericMember::OneMore), 42);
}

TEST(SlotOrder, OverridesOfADerivedMemberKeepThePlaces)
{
    ExpectSlotsZeroToThirtySix<ConcreteMember>();
    EXPECT_EQ(Slot(&AmplifiedMember::SetMomentAmplificationFactorStrongAxis), 30);
    EXPECT_EQ(Slot(&AmplifiedMember::SetMomentAmplificationFactorWeakAxis), 31);
}

#endif
