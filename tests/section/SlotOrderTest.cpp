#include <cstddef>
#include <cstdint>
#include <cstring>

#include "section/Properties.h"

// Code modules are built against the order of the virtual operations and of the fields. Under the Itanium C++ ABI a
// pointer to a virtual member function holds the offset of its entry in the virtual table, where a virtual destructor
// takes two entries.

namespace Keltrix::Steel::Test {
namespace {

/// Place in the order of virtual operations, counting the destructor as one; -1 where it is not virtual.
template <class F>
int Slot(F function)
{
    struct {
        std::ptrdiff_t pointer;
        std::ptrdiff_t adjustment;
    } parts;
    static_assert(sizeof parts == sizeof function);
    std::memcpy(&parts, &function, sizeof parts);
#if defined(__aarch64__) || defined(__arm__)
    if ((parts.adjustment & 1) == 0) return -1;
    const auto entry = static_cast<int>(parts.pointer / static_cast<std::ptrdiff_t>(sizeof(void*)));
#else
    if ((parts.pointer & 1) == 0) return -1;
    const auto entry = static_cast<int>((parts.pointer - 1) / static_cast<std::ptrdiff_t>(sizeof(void*)));
#endif
    return entry == 0 ? 0 : entry - 1; // the destructor is slot 1 in two entries
}

template <class S>
void ExpectCommonSlots()
{
    EXPECT_EQ(Slot(&S::Clone), 0);
    EXPECT_EQ(Slot(&S::SetKeltrixSec), 2);
    EXPECT_EQ(Slot(&S::Area), 3);
    EXPECT_EQ(Slot(&S::Ybar), 4);
    EXPECT_EQ(Slot(&S::Xbar), 5);
    EXPECT_EQ(Slot(&S::Ixx), 6);
    EXPECT_EQ(Slot(&S::Iyy), 7);
    EXPECT_EQ(Slot(&S::Ixy), 8);
    EXPECT_EQ(Slot(&S::Sxx), 9);
    EXPECT_EQ(Slot(&S::Syy), 10);
    EXPECT_EQ(Slot(&S::Zxx), 11);
    EXPECT_EQ(Slot(&S::Zyy), 12);
    EXPECT_EQ(Slot(&S::J), 13);
    EXPECT_EQ(Slot(&S::SectGeomString), 14);
    EXPECT_EQ(Slot(&S::IsWelded), 15);
}

TEST(SlotOrder, OfTheOperationsCommonToAllShapes)
{
    EXPECT_EQ(Slot(&CCloneableGeom::Clone), 0);
    ExpectCommonSlots<CDesSectGeom>();
    ExpectCommonSlots<ISection>();
    ExpectCommonSlots<ChannelSection>();
    ExpectCommonSlots<TSection>();
    ExpectCommonSlots<AngleSection>();
    ExpectCommonSlots<RhsSection>();
    ExpectCommonSlots<ChsSection>();
}

TEST(SlotOrder, OfWhatTheShapesAppend)
{
    EXPECT_EQ(Slot(&ISection::Gamma), 16);
    EXPECT_EQ(Slot(&ISection::MirrorXX), 17);
    EXPECT_EQ(Slot(&ISection::IsXXSymmetric), 18);
    EXPECT_EQ(Slot(&ISection::YbarPlastic), 19);

    EXPECT_EQ(Slot(&ChannelSection::YbarPlastic), 16);
    EXPECT_EQ(Slot(&ChannelSection::XbarPlastic), 17);
    EXPECT_EQ(Slot(&ChannelSection::Iw), 18);

    EXPECT_EQ(Slot(&TSection::Iw), 16);
    EXPECT_EQ(Slot(&TSection::MonoSymBeta), 17);
    EXPECT_EQ(Slot(&TSection::YbarPlastic), 18);

    EXPECT_EQ(Slot(&AngleSection::Iuu), 16);
    EXPECT_EQ(Slot(&AngleSection::Ivv), 17);
    EXPECT_EQ(Slot(&AngleSection::Alpha), 18);
    EXPECT_EQ(Slot(&AngleSection::Zuu), 19);
    EXPECT_EQ(Slot(&AngleSection::Zvv), 20);
    EXPECT_EQ(Slot(&AngleSection::Suu), 21);
    EXPECT_EQ(Slot(&AngleSection::Svv), 22);
    EXPECT_EQ(Slot(&AngleSection::YbarPlastic), 23);
    EXPECT_EQ(Slot(&AngleSection::Reflect45), 24);

    EXPECT_EQ(Slot(&RhsSection::RadiusInner), 16);
    EXPECT_EQ(Slot(&RhsSection::RadiusOuter), 17);
    EXPECT_EQ(Slot(&RhsSection::Rotate90Clockwise), 18);
}

class CodeSlots : public CSectionCodeBase {
public:
    using CSectionCodeBase::MirrorXX;
};

TEST(SlotOrder, OfTheSectionCodeBase)
{
    EXPECT_EQ(Slot(&CSectionCodeBase::Clone), 0);
    EXPECT_EQ(Slot(&CSectionCodeBase::SetSteelDesignProp), 2);
    EXPECT_EQ(Slot(&CSectionCodeBase::ForcesChanged), 3);
    EXPECT_EQ(Slot(&CSectionCodeBase::SectionChanged), 4);
    EXPECT_EQ(Slot(&CodeSlots::MirrorXX), 5);
    EXPECT_EQ(Slot(&CSectionCodeBase::SetKeltrixSec), 6);
    EXPECT_EQ(Slot(&CSectionCodeBase::Area), 7);
    EXPECT_EQ(Slot(&CSectionCodeBase::SectGeomString), 8);
    EXPECT_EQ(Slot(&CSectionCodeBase::Ixx), 9);
    EXPECT_EQ(Slot(&CSectionCodeBase::Iyy), 10);
    EXPECT_EQ(Slot(&CSectionCodeBase::Ixy), 11);
    EXPECT_EQ(Slot(&CSectionCodeBase::Sxx), 12);
    EXPECT_EQ(Slot(&CSectionCodeBase::Syy), 13);
    EXPECT_EQ(Slot(&CSectionCodeBase::Zxx), 14);
    EXPECT_EQ(Slot(&CSectionCodeBase::Zyy), 15);
    EXPECT_EQ(Slot(&CSectionCodeBase::J), 16);
    EXPECT_EQ(Slot(&CSectionCodeBase::SectionClass), 17);
    EXPECT_EQ(Slot(&CSectionCodeBase::Gamma), 18);
    EXPECT_EQ(Slot(&CSectionCodeBase::Iuu), 19);
    EXPECT_EQ(Slot(&CSectionCodeBase::Ivv), 20);
    EXPECT_EQ(Slot(&CSectionCodeBase::Alpha), 21);
    EXPECT_EQ(Slot(&CSectionCodeBase::GetKeltrixSec), 22);
    EXPECT_EQ(Slot(&CSectionCodeBase::SetGrade), -1);
}

template <class S, std::size_t N>
void ExpectFields(const S& section, int fabType, const std::array<double, N>& expected)
{
    static_assert(sizeof(S) == sizeof(void*) + 2 * sizeof(std::int32_t) + N * sizeof(double));
    const char* bytes = reinterpret_cast<const char*>(&section) + sizeof(void*);
    std::array<std::int32_t, 2> base;
    std::memcpy(base.data(), bytes, sizeof base);
    EXPECT_EQ(base, (std::array<std::int32_t, 2>{fabType, 0}));
    std::array<double, N> fields;
    std::memcpy(fields.data(), bytes + sizeof base, sizeof fields);
    EXPECT_EQ(fields, expected);
}

TEST(FieldOrder, OfEveryShape)
{
    static_assert(sizeof(CCloneableGeom) == sizeof(void*));
    ExpectFields(Make<ISection>(HostGeneralI(1, 5, 6, 2, 3, 4, 7)), 0, std::array<double, 7>{1, 2, 3, 4, 5, 6, 7});
    ExpectFields(Make<ChannelSection>(HostChannel(1, 5, 2, 3, 7, 8)), 1, std::array<double, 8>{1, 2, 3, 3, 5, 5, 7, 8});
    ExpectFields(Make<TSection>(HostT(1, 4, 2, 3, 5, 6)), 1, std::array<double, 6>{1, 2, 3, 4, 5, 6});
    ExpectFields(Make<AngleSection>(HostAngle(1, 2, 3, 4, 5)), 1, std::array<double, 5>{1, 2, 3, 4, 5});
    ExpectFields(Make<RhsSection>(HostRhs(1, 2, 4, 3, SEC_WELDED)), 0, std::array<double, 4>{1, 2, 3, 4});
    ExpectFields(Make<ChsSection>(HostChs(1, 2)), 1, std::array<double, 2>{1, 2});
}

} // namespace
} // namespace Keltrix::Steel::Test
