#include <cstdlib>
#include <memory>
#include <new>
#include <stdexcept>

#include "section/Properties.h"

namespace {

long allocations = 0;

} // namespace

// GCC pairs the calls it can see and takes the replaced pair for a mismatched one.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif

void* operator new(std::size_t size)
{
    ++allocations;
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace Keltrix::Steel::Test {
namespace {

/// Counts its clones, made and alive.
template <class S>
class Counted : public S {
public:
    Counted() { ++alive; }
    Counted(const Counted& other) : S(other) { ++alive; }
    ~Counted() override { --alive; }
    Counted& operator=(const Counted&) = default;
    Counted* Clone() const override
    {
        ++made;
        return new Counted(*this);
    }
    static inline long made = 0;
    static inline long alive = 0;
};

double sink = 0.0;

/// Allocations of one call beyond the clones that it made, and the clones.
template <class S>
void ExpectClonesOnly(const S& section, const char* what, double (S::*property)() const, long clones)
{
    const long madeBefore = S::made, aliveBefore = S::alive, allocationsBefore = allocations;
    sink += (section.*property)();
    EXPECT_EQ(allocations - allocationsBefore, clones) << what;
    EXPECT_EQ(S::made - madeBefore, clones) << what;
    EXPECT_EQ(S::alive, aliveBefore) << what;
}

template <class S>
void ExpectCommonWithoutAllocation(const S& section)
{
    ExpectClonesOnly<S>(section, "Area", &S::Area, 0);
    ExpectClonesOnly<S>(section, "Xbar", &S::Xbar, 0);
    ExpectClonesOnly<S>(section, "Sxx", &S::Sxx, 0);
    ExpectClonesOnly<S>(section, "J", &S::J, 0);
}

template <class S>
void ExpectNoAllocation(const S& section)
{
    ExpectCommonWithoutAllocation(section);
    ExpectClonesOnly<S>(section, "Ybar", &S::Ybar, 0);
    ExpectClonesOnly<S>(section, "Ixx", &S::Ixx, 0);
    ExpectClonesOnly<S>(section, "Iyy", &S::Iyy, 0);
    ExpectClonesOnly<S>(section, "Ixy", &S::Ixy, 0);
    ExpectClonesOnly<S>(section, "Syy", &S::Syy, 0);
    ExpectClonesOnly<S>(section, "Zxx", &S::Zxx, 0);
    ExpectClonesOnly<S>(section, "Zyy", &S::Zyy, 0);
}

TEST(Allocation, IsCounted)
{
    const long before = allocations;
    const std::unique_ptr<CDesSectGeom> clone(Make<ChsSection>(HostChs(1, 0.1)).Clone());
    EXPECT_GT(allocations, before);
}

TEST(Allocation, NoneForShapesThatNeedNoClone)
{
    const auto i = Make<Counted<ISection>>(HostI(12, 6, 1, 2, 1));
    ExpectNoAllocation(i);
    ExpectClonesOnly<Counted<ISection>>(i, "Gamma", &Counted<ISection>::Gamma, 0);
    ExpectClonesOnly<Counted<ISection>>(i, "YbarPlastic", &Counted<ISection>::YbarPlastic, 0);
    const auto channel = Make<Counted<ChannelSection>>(HostChannel(20, 8, 1, 2, 1.5, 1));
    ExpectNoAllocation(channel);
    ExpectClonesOnly<Counted<ChannelSection>>(channel, "Iw", &Counted<ChannelSection>::Iw, 0);
    ExpectClonesOnly<Counted<ChannelSection>>(channel, "XbarPlastic", &Counted<ChannelSection>::XbarPlastic, 0);
    const auto tee = Make<Counted<TSection>>(HostT(10, 8, 1, 2, 1.5, 1));
    ExpectNoAllocation(tee);
    ExpectClonesOnly<Counted<TSection>>(tee, "Iw", &Counted<TSection>::Iw, 0);
    ExpectClonesOnly<Counted<TSection>>(tee, "MonoSymBeta", &Counted<TSection>::MonoSymBeta, 0);
    ExpectNoAllocation(Make<Counted<ChsSection>>(HostChs(1, 0.1)));
}

TEST(Allocation, OneCloneForWhatTheRectangularHollowSectionAsksAboutY)
{
    using S = Counted<RhsSection>;
    const auto section = Make<S>(HostRhs(20, 10, 1, 1));
    ExpectCommonWithoutAllocation(section);
    ExpectClonesOnly<S>(section, "Ixx", &S::Ixx, 0);
    ExpectClonesOnly<S>(section, "Zxx", &S::Zxx, 0);
    ExpectClonesOnly<S>(section, "Iyy", &S::Iyy, 1);
    ExpectClonesOnly<S>(section, "Syy", &S::Syy, 1);
    ExpectClonesOnly<S>(section, "Zyy", &S::Zyy, 1);
}

TEST(Allocation, OneCloneForEachThatTheAngleAsksAboutTheOtherAxis)
{
    using S = Counted<AngleSection>;
    const auto section = Make<S>(HostAngle(15, 7.5, 1, 1.2, 0.6));
    ExpectCommonWithoutAllocation(section);
    ExpectClonesOnly<S>(section, "Ybar", &S::Ybar, 1);
    ExpectClonesOnly<S>(section, "Ixx", &S::Ixx, 1); // Ybar
    ExpectClonesOnly<S>(section, "Iyy", &S::Iyy, 2); // Ixx of the clone
    ExpectClonesOnly<S>(section, "Ixy", &S::Ixy, 1); // Ybar
    ExpectClonesOnly<S>(section, "Syy", &S::Syy, 1);
    ExpectClonesOnly<S>(section, "Zxx", &S::Zxx, 2); // Ybar, Ixx
    ExpectClonesOnly<S>(section, "Zyy", &S::Zyy, 2); // Iyy
    ExpectClonesOnly<S>(section, "Iuu", &S::Iuu, 4); // Ixx, Iyy, Ixy
    ExpectClonesOnly<S>(section, "Ivv", &S::Ivv, 4);
    ExpectClonesOnly<S>(section, "Alpha", &S::Alpha, 4);
    ExpectClonesOnly<S>(section, "Zuu", &S::Zuu, 9); // Ybar, Alpha, Iuu
    ExpectClonesOnly<S>(section, "Zvv", &S::Zvv, 9); // Ybar, Alpha, Ivv
    ExpectClonesOnly<S>(section, "Suu", &S::Suu, 4); // Alpha
    ExpectClonesOnly<S>(section, "Svv", &S::Svv, 5); // Ybar, Alpha
    ExpectClonesOnly<S>(section, "YbarPlastic", &S::YbarPlastic, 0);
}

/// Its x properties throw, or its turning does.
template <class S>
class Throwing : public Counted<S> {
public:
    Throwing* Clone() const override { return new Throwing(*this); }
    double Xbar() const override { throw std::runtime_error("Xbar"); }
    double Ixx() const override { throw std::runtime_error("Ixx"); }
    double Sxx() const override { throw std::runtime_error("Sxx"); }
    double Zxx() const override { throw std::runtime_error("Zxx"); }
};

class StuckAngle : public Counted<AngleSection> {
public:
    StuckAngle* Clone() const override { return new StuckAngle(*this); }

protected:
    void Reflect45() override { throw std::runtime_error("Reflect45"); }
};

class StuckRhs : public Counted<RhsSection> {
public:
    StuckRhs* Clone() const override { return new StuckRhs(*this); }

protected:
    void Rotate90Clockwise() override { throw std::runtime_error("Rotate90Clockwise"); }
};

TEST(Clone, IsDestroyedWhenTheCallOnItThrows)
{
    const Throwing<AngleSection> angle;
    const long angles = Counted<AngleSection>::alive;
    EXPECT_THROW(angle.Ybar(), std::runtime_error);
    EXPECT_THROW(angle.Iyy(), std::runtime_error);
    EXPECT_THROW(angle.Syy(), std::runtime_error);
    EXPECT_EQ(Counted<AngleSection>::alive, angles);

    const Throwing<RhsSection> hollow;
    const long hollows = Counted<RhsSection>::alive;
    EXPECT_THROW(hollow.Iyy(), std::runtime_error);
    EXPECT_THROW(hollow.Syy(), std::runtime_error);
    EXPECT_THROW(hollow.Zyy(), std::runtime_error);
    EXPECT_EQ(Counted<RhsSection>::alive, hollows);
}

TEST(Clone, IsDestroyedWhenTurningItThrows)
{
    const StuckAngle angle;
    const long angles = Counted<AngleSection>::alive;
    EXPECT_THROW(angle.Ybar(), std::runtime_error);
    EXPECT_EQ(Counted<AngleSection>::alive, angles);
    const StuckRhs hollow;
    const long hollows = Counted<RhsSection>::alive;
    EXPECT_THROW(hollow.Zyy(), std::runtime_error);
    EXPECT_EQ(Counted<RhsSection>::alive, hollows);
}

} // namespace
} // namespace Keltrix::Steel::Test
