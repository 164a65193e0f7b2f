#include <cstring>
#include <memory>
#include <numbers>
#include <vector>

#include "section/Properties.h"

namespace Keltrix::Steel::Test {
namespace {

/// A code's section that notes its notifications, and at each the state that it still has.
class CodeSection : public CSectionCodeBase {
public:
    CodeSection() = default;
    CodeSection* Clone() const override { return new CodeSection(*this); }
    void ForcesChanged() override { notes.push_back({'F', State()}); }
    void SectionChanged() override { notes.push_back({'S', State()}); }
    bool SetKeltrixSec(const CSection& sec, CMemberResult* const result) override
    {
        return CSectionCodeBase::SetKeltrixSec(sec, result);
    }
    double Area() const override { return 0.0; }
    CString SectGeomString(const CDesFormat&) override { return {}; }
    double Ixx() const override { return ++asked, ixx; }
    double Iyy() const override { return ++asked, iyy; }
    double Ixy() const override { return ++asked, ixy; }
    double Sxx() const override { return 0.0; }
    double Syy() const override { return 0.0; }
    double Zxx() const override { return 0.0; }
    double Zyy() const override { return 0.0; }
    double J() const override { return 0.0; }
    int SectionClass() const override { return 0; }

    using CSectionCodeBase::Beta1;
    using CSectionCodeBase::Beta2;
    using CSectionCodeBase::Beta3;
    using CSectionCodeBase::Beta4;
    using CSectionCodeBase::MemberRestraint;
    using CSectionCodeBase::MemberRestraintSet;
    using CSectionCodeBase::MirrorXX;
    using CSectionCodeBase::NetGross;
    using CSectionCodeBase::PlasElas;
    using CSectionCodeBase::PlasElasDefaulted;

    std::array<double, 6> Actions() const
    {
        return {GetForceAxial(), GetShearX(), GetShearY(), GetTorsion(), GetMomentXX(), GetMomentYY()};
    }
    struct Seen {
        std::array<double, 6> actions;
        CString grade;
        CString section;
    };
    Seen State() { return {Actions(), GetGrade().Name(), GetKeltrixSec().GetName()}; }
    struct Note {
        char which;
        Seen before;
    };
    std::vector<Note> notes;
    double ixx = 0.0, iyy = 0.0, ixy = 0.0;
    mutable int asked = 0;
};

using Actions = std::array<double, 6>;

TEST(SectionCodeBase, StartsWithTheDocumentedDefaults)
{
    CodeSection section;
    EXPECT_EQ(section.Actions(), (Actions{0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(section.NetGross(), 1.0);
    EXPECT_EQ(section.Beta1(), 0.7);
    EXPECT_EQ(section.Beta2(), 0.4);
    EXPECT_EQ(section.Beta3(), 0.6);
    EXPECT_EQ(section.Beta4(), 0.7);
    EXPECT_EQ(section.PlasElas(), 1.2);
    EXPECT_FALSE(section.PlasElasDefaulted());
    EXPECT_EQ(section.GetTemperature(), 20.0);
    EXPECT_EQ(section.GetExpPeriRatio(), 0.0);
    EXPECT_EQ(static_cast<int>(section.GetExposureType()), 1);
    EXPECT_FALSE(section.MemberRestraintSet());
    EXPECT_EQ(section.MemberRestraint(), CRestraint());
    EXPECT_TRUE(section.GetKeltrixSec().GetName().IsEmpty());
    EXPECT_EQ(section.GetKeltrixSec().NumComponents(), 1);
    EXPECT_EQ(section.Gamma(), 0.0);
    EXPECT_TRUE(section.notes.empty());
}

TEST(SectionCodeBase, ForcesAndMomentsAreTakenFromTheElementAxes)
{
    CodeSection section;
    section.SetMemberForces({10, 20, 30});
    EXPECT_EQ(section.Actions(), (Actions{10, 20, -30, 0, 0, 0}));
    section.SetMemberMoments({1, 2, 3});
    EXPECT_EQ(section.Actions(), (Actions{10, 20, -30, 1, 2, 3}));
    section.ClearForcesAndMoments();
    EXPECT_EQ(section.Actions(), (Actions{0, 0, 0, 0, 0, 0}));
}

TEST(SectionCodeBase, EverySetterNotifiesOnceBeforeAnyChange)
{
    const Actions start{1, 2, 3, 4, 5, 6};
    const struct {
        const char* what;
        void (*set)(CodeSection&);
        Actions after;
    } setters[] = {{"forces",
                    [](CodeSection& s) {
                        s.SetMemberForces({7, 8, 9});
                    },
                    {7, 8, -9, 4, 5, 6}},
                   {"moments",
                    [](CodeSection& s) {
                        s.SetMemberMoments({7, 8, 9});
                    },
                    {1, 2, 3, 7, 8, 9}},
                   {"axial", [](CodeSection& s) { s.SetForceAxial(7); }, {7, 2, 3, 4, 5, 6}},
                   {"shear x", [](CodeSection& s) { s.SetShearForceX(7); }, {1, 7, 3, 4, 5, 6}},
                   {"shear y", [](CodeSection& s) { s.SetShearForceY(7); }, {1, 2, 7, 4, 5, 6}},
                   {"torsion", [](CodeSection& s) { s.SetTorsion(7); }, {1, 2, 3, 7, 5, 6}},
                   {"moment xx", [](CodeSection& s) { s.SetMomentXX(7); }, {1, 2, 3, 4, 7, 6}},
                   {"moment yy", [](CodeSection& s) { s.SetMomentYY(7); }, {1, 2, 3, 4, 5, 7}},
                   {"clear", [](CodeSection& s) { s.ClearForcesAndMoments(); }, {0, 0, 0, 0, 0, 0}}};
    for (const auto& setter : setters) {
        CodeSection section;
        section.SetMemberForces({1, 2, -3});
        section.SetMemberMoments({4, 5, 6});
        section.notes.clear();
        setter.set(section);
        ASSERT_EQ(section.notes.size(), 1u) << setter.what;
        EXPECT_EQ(section.notes[0].which, 'F') << setter.what;
        EXPECT_EQ(section.notes[0].before.actions, start) << setter.what;
        EXPECT_EQ(section.Actions(), setter.after) << setter.what;
    }
}

TEST(SectionCodeBase, SectionAndGradeNotifyOnceBeforeTheChange)
{
    CodeSection section;
    CMemberResult result;
    CSection host;
    host.SetName(L"new");
    EXPECT_TRUE(section.SetKeltrixSec(host, &result));
    EXPECT_TRUE(section.SetKeltrixSec(host, nullptr));
    EXPECT_EQ(section.GetKeltrixSec().GetName(), L"new");
    EXPECT_TRUE(result == CMemberResult());
    section.SetGrade(CSteelGrade(L"S275", 0, 0, 0, 1.0));
    EXPECT_EQ(section.GetGrade().Name(), L"S275");
    ASSERT_EQ(section.notes.size(), 3u);
    EXPECT_EQ(section.notes[0].which, 'S');
    EXPECT_TRUE(section.notes[0].before.section.IsEmpty());
    EXPECT_EQ(section.notes[2].which, 'S');
    EXPECT_TRUE(section.notes[2].before.grade.IsEmpty());
}

CSection WithRatios(double netGross, double beta, double plasElas)
{
    CSecComp component;
    component.SetNetGross(netGross);
    component.SetBeta(beta);
    component.SetPlasElas(plasElas);
    CSection host;
    host.SetComponent(0, component);
    return host;
}

TEST(SectionCodeBase, DesignPropertiesComeFromTheComponentWithoutNotification)
{
    CodeSection section;
    section.SetKeltrixSec(WithRatios(0.8, 0.55, 1.15), nullptr);
    section.notes.clear();
    EXPECT_TRUE(section.SetSteelDesignProp(CSteelGrade(L"S355", 0, 0, 0, 1.0)));
    EXPECT_TRUE(section.notes.empty());
    EXPECT_EQ(section.GetGrade().Name(), L"S355");
    EXPECT_EQ(section.NetGross(), 0.8);
    for (const double beta : {section.Beta1(), section.Beta2(), section.Beta3(), section.Beta4()})
        EXPECT_EQ(beta, 0.55);
    EXPECT_EQ(section.PlasElas(), 1.15);
    EXPECT_FALSE(section.PlasElasDefaulted());
}

TEST(SectionCodeBase, MissingPlasticToElasticRatioIsDefaultedAndStaysMarked)
{
    CodeSection section;
    for (const double none : {0.0, 0.9e-10, -0.9e-10}) {
        section.SetKeltrixSec(WithRatios(1.0, 0.7, none), nullptr);
        section.SetSteelDesignProp(CSteelGrade());
        EXPECT_EQ(section.PlasElas(), 1.2) << none;
        EXPECT_TRUE(section.PlasElasDefaulted()) << none;
    }
    section.SetKeltrixSec(WithRatios(1.0, 0.7, 1e-10), nullptr);
    section.SetSteelDesignProp(CSteelGrade());
    EXPECT_EQ(section.PlasElas(), 1e-10);
    EXPECT_TRUE(section.PlasElasDefaulted()); // never taken back
}

TEST(SectionCodeBase, MirroringWithoutARestraintTurnsThreeActionsOnly)
{
    CodeSection section;
    section.SetMemberForces({1, 2, -3});
    section.SetMemberMoments({4, 5, 6});
    section.notes.clear();
    section.MirrorXX();
    EXPECT_EQ(section.Actions(), (Actions{1, 2, -3, -4, -5, 6}));
    EXPECT_EQ(section.MemberRestraint(), CRestraint());
    ASSERT_EQ(section.notes.size(), 1u);
    EXPECT_EQ(section.notes[0].which, 'S');
    EXPECT_EQ(section.notes[0].before.actions, (Actions{1, 2, 3, 4, 5, 6}));
}

TEST(SectionCodeBase, MirroringTurnsAndEmptiesTheRestraintThatWasSet)
{
    CRestraint restraint(static_cast<int>(CRestraint::FLANGE1_LATERAL | CRestraint::TORSION), Data::TOP_FLANGE, 0.1);
    restraint.SetForcesAndMoments({1, 2, 3}, {4, 5, 6}, true);
    CodeSection section;
    section.SetMemberRestraint(restraint);
    EXPECT_TRUE(section.notes.empty());
    EXPECT_EQ(section.MemberRestraint(), restraint);
    section.MirrorXX();
    restraint.MirrorMajorAxis();
    EXPECT_EQ(section.MemberRestraint(), restraint);
    EXPECT_EQ(section.MemberRestraint().RestFlag(), 0);
}

TEST(SectionCodeBase, OwnRestraintCanBeSetAgain)
{
    CodeSection section;
    section.SetMemberRestraint(section.MemberRestraint());
    EXPECT_TRUE(section.MemberRestraintSet());
    EXPECT_EQ(section.MemberRestraint(), CRestraint());
    EXPECT_TRUE(section.notes.empty());
}

TEST(SectionCodeBase, PrincipalAxesFollowFromTheSecondMoments)
{
    CodeSection section;
    section.ixx = 9.0;
    section.iyy = 3.0;
    section.ixy = -4.0;
    EXPECT_DOUBLE_EQ(section.Iuu(), 11.0); // 6 + √(3² + 4²)
    EXPECT_DOUBLE_EQ(section.Ivv(), 1.0);
    EXPECT_DOUBLE_EQ(section.Alpha(), std::atan(4.0 / 3.0) / 2.0);
    EXPECT_EQ(section.asked, 9);
    std::swap(section.ixx, section.iyy);
    EXPECT_DOUBLE_EQ(section.Alpha(), std::numbers::pi / 2.0 - std::atan(4.0 / 3.0) / 2.0);
}

TEST(SectionCodeBase, PrincipalAxesHaveAbsoluteLimits)
{
    CodeSection section;
    section.ixx = 2.0;
    section.iyy = 5.0;
    section.ixy = 0.99e-10;
    EXPECT_EQ(section.Iuu(), 5.0);
    EXPECT_EQ(section.Ivv(), 2.0);
    section.ixy = -3.0;
    section.iyy = 2.0;
    EXPECT_EQ(section.Alpha(), std::numbers::pi / 4.0);
    section.iyy = 2.0 + 0.99e-6;
    EXPECT_EQ(section.Alpha(), std::numbers::pi / 4.0);
    section.iyy = 2.0 + 1.01e-6;
    EXPECT_NE(section.Alpha(), std::numbers::pi / 4.0);
    section.ixx = section.iyy = std::numeric_limits<double>::infinity();
    EXPECT_EQ(section.Alpha(), std::numbers::pi / 4.0);
}

TEST(SectionCodeBase, CopiesKeepEverything)
{
    CodeSection original;
    original.SetMemberForces({1, 2, 3});
    original.SetGrade(CSteelGrade(L"S275", 0, 0, 0, 1.0));
    original.SetKeltrixSec(WithRatios(0.8, 0.55, 0.0), nullptr);
    original.SetSteelDesignProp(original.GetGrade());
    original.SetMemberRestraint(CRestraint(static_cast<int>(CRestraint::TORSION), Data::SHR_CENTRE, 0.0));
    CodeSection assigned;
    assigned = original;
    for (CodeSection* copy : {original.Clone(), assigned.Clone()}) {
        const std::unique_ptr<CodeSection> owned(copy);
        EXPECT_EQ(owned->Actions(), original.Actions());
        EXPECT_EQ(owned->GetGrade(), original.GetGrade());
        EXPECT_EQ(owned->NetGross(), 0.8);
        EXPECT_TRUE(owned->PlasElasDefaulted());
        EXPECT_TRUE(owned->MemberRestraintSet());
        EXPECT_EQ(owned->MemberRestraint(), original.MemberRestraint());
        EXPECT_EQ(owned->GetKeltrixSec().Component(0).Beta(), 0.55);
    }
}

TEST(SectionCodeBase, FieldsLieInTheirOrder)
{
    CodeSection section;
    section.SetMemberForces({3, 5, -6});
    section.SetMemberMoments({4, 1, 2});
    std::array<double, 12> fields;
    std::memcpy(fields.data(), reinterpret_cast<const char*>(&section) + sizeof(void*), sizeof fields);
    EXPECT_EQ(fields, (std::array<double, 12>{1, 2, 3, 4, 5, 6, 1.0, 0.7, 0.4, 0.6, 0.7, 1.2}));
}

} // namespace
} // namespace Keltrix::Steel::Test
