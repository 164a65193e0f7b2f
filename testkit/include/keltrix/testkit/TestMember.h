#pragma once

#include <algorithm>
#include <iterator>
#include <random>
#include <vector>

#include "keltrix/steel/Steel.h"

// Members in equilibrium, and what can be made of them without another answer: divided, turned end for end, held more.
namespace Keltrix::TestKit {

using Steel::CMemberPoint;
using Steel::CRestraint;
using Steel::CSubSpan;

/// Points, sub-spans and their forces.
struct TestMember {
    std::vector<CMemberPoint> points;
    std::vector<CSubSpan> subSpans;

    double Length() const { return points.back().GetPos() - points.front().GetPos(); }
};

/// A restraint by its name or code: "Pinned", "F1L TR".
inline CRestraint Restraint(const wchar_t* text)
{
    CRestraint r;
    r.SetDescription(CString(text));
    return r;
}

/// Adds a point; the restraint as above.
inline void AddPoint(TestMember& m, double x, const wchar_t* restraint)
{
    CMemberPoint p;
    p.Set1Index(static_cast<int>(m.points.size()) + 1);
    p.SetPos(x);
    p.SetRestraint(Restraint(restraint));
    m.points.push_back(p);
}

/// A sub-span with end values about the major axis: Fz and Myy.
inline void AddSubSpan(TestMember& m, double shearLeft, double shearRight, double momentLeft, double momentRight,
                       const wchar_t* along = L"Free")
{
    CSubSpan s;
    s.Set1Index(static_cast<int>(m.subSpans.size()) + 1);
    s.SetForcesAll({0.0, 0.0, shearLeft}, {0.0, 0.0, shearRight});
    s.SetMomentsAll({0.0, momentLeft, 0.0}, {0.0, momentRight, 0.0});
    s.SetRestraint(Restraint(along));
    m.subSpans.push_back(s);
}

/// One to six sub-spans in equilibrium about both axes, each with a uniform load of its own and jumps of shear between
/// them; axial force linear.
inline TestMember RandomMember(std::mt19937& random)
{
    const auto real = [&](double a, double b) { return std::uniform_real_distribution<double>(a, b)(random); };
    static const wchar_t* const HOLDS[] = {L"Free",
                                           L"Free",
                                           L"Top flange lateral",
                                           L"Bottom flange lateral",
                                           L"Pinned",
                                           L"FCL",
                                           L"FTL",
                                           L"Top and Bottom flange lateral",
                                           L"TR",
                                           L"TR F1L"};
    const auto hold = [&]() {
        return HOLDS[std::uniform_int_distribution<std::size_t>(0, std::size(HOLDS) - 1)(random)];
    };
    TestMember m;
    const int count = std::uniform_int_distribution<int>(1, 6)(random);
    double x = 0.0;
    AddPoint(m, x, real(0, 1) < 0.7 ? L"Pinned" : hold());
    double My = real(0, 1) < 0.5 ? 0.0 : real(-3e5, 3e5);
    double Mz = real(0, 1) < 0.5 ? 0.0 : real(-3e4, 3e4);
    double F = real(-5e5, 5e5);
    for (int k = 0; k < count; ++k) {
        const double h = real(0.5, 5.0);
        const double vz = real(-1e5, 1e5);
        const double qz = real(0, 1) < 0.3 ? 0.0 : real(-5e4, 5e4);
        const double vy = real(-1e4, 1e4);
        const double qy = real(-5e3, 5e3);
        const double My1 = My + vz * h + 0.5 * qz * h * h;
        const double Mz1 = Mz - vy * h - 0.5 * qy * h * h;
        const double F1 = F + real(-1e5, 1e5);
        CSubSpan s;
        s.Set1Index(k + 1);
        s.SetForcesAll({F, vy, vz}, {F1, vy + qy * h, vz + qz * h});
        s.SetMomentsAll({0.0, My, Mz}, {0.0, My1, Mz1});
        s.SetRestraint(Restraint(real(0, 1) < 0.6 ? L"Free" : hold()));
        m.subSpans.push_back(s);
        x += h;
        AddPoint(m, x, k + 1 == count ? L"Pinned" : hold());
        My = My1;
        Mz = Mz1;
        F = F1;
    }
    return m;
}

/// The member with sub-span k divided at the share s by a free point, with the forces that linear shear and the parabola
/// have there.
inline TestMember Divided(const TestMember& m, std::size_t k, double s)
{
    TestMember d = m;
    const auto between = [s](const Vec3<double>& a, const Vec3<double>& b) {
        return Vec3<double>((1 - s) * a.x + s * b.x, (1 - s) * a.y + s * b.y, (1 - s) * a.z + s * b.z);
    };
    const CSubSpan& whole = m.subSpans[k];
    const double h = m.points[k + 1].GetPos() - m.points[k].GetPos();
    const Vec3<double> fl = whole.GetForcesLeft();
    const Vec3<double> fr = whole.GetForcesRight();
    const Vec3<double> f = between(fl, fr);
    Vec3<double> moment = between(whole.GetMomentsLeft(), whole.GetMomentsRight());
    moment.y -= 0.5 * (fr.z - fl.z) * h * s * (1 - s);
    moment.z += 0.5 * (fr.y - fl.y) * h * s * (1 - s);
    CSubSpan left = whole;
    left.SetForcesRight(f);
    left.SetMomentsRight(moment);
    CSubSpan right = whole;
    right.SetForcesLeft(f);
    right.SetMomentsLeft(moment);
    d.subSpans[k] = left;
    d.subSpans.insert(d.subSpans.begin() + static_cast<std::ptrdiff_t>(k) + 1, right);
    CMemberPoint p;
    p.SetPos(m.points[k].GetPos() + s * h);
    d.points.insert(d.points.begin() + static_cast<std::ptrdiff_t>(k) + 1, p);
    for (std::size_t i = 0; i < d.points.size(); ++i)
        d.points[i].Set1Index(static_cast<int>(i) + 1);
    for (std::size_t i = 0; i < d.subSpans.size(); ++i)
        d.subSpans[i].Set1Index(static_cast<int>(i) + 1);
    return d;
}

/// The member seen from its other end: forces on the other face change sign with the direction of x for shear, moments
/// keep theirs.
inline TestMember Mirrored(const TestMember& m)
{
    TestMember r;
    const double end = m.points.back().GetPos();
    for (auto p = m.points.rbegin(); p != m.points.rend(); ++p) {
        CMemberPoint q = *p;
        q.SetPos(end - p->GetPos());
        q.Set1Index(static_cast<int>(r.points.size()) + 1);
        r.points.push_back(q);
    }
    const auto turned = [](const Vec3<double>& f) { return Vec3<double>(f.x, -f.y, -f.z); };
    for (auto s = m.subSpans.rbegin(); s != m.subSpans.rend(); ++s) {
        CSubSpan t = *s;
        t.Set1Index(static_cast<int>(r.subSpans.size()) + 1);
        t.SetForcesAll(turned(s->GetForcesRight()), turned(s->GetForcesLeft()));
        t.SetMomentsAll(s->GetMomentsRight(), s->GetMomentsLeft());
        r.subSpans.push_back(t);
    }
    return r;
}

/// All forces and moments times a factor.
inline TestMember Scaled(TestMember m, double factor)
{
    const auto times = [factor](const Vec3<double>& v) {
        return Vec3<double>(v.x * factor, v.y * factor, v.z * factor);
    };
    for (CSubSpan& s : m.subSpans) {
        s.SetForcesAll(times(s.GetForcesLeft()), times(s.GetForcesRight()));
        s.SetMomentsAll(times(s.GetMomentsLeft()), times(s.GetMomentsRight()));
    }
    return m;
}

/// Ends that are held or free of everything, and points and lengths that are held laterally: with flanges held against rotation
/// on plan, partial torsional restraint, or tips held in torsion a restraint more can lower a resistance of a code's tables.
inline TestMember PlainlyHeld(std::mt19937& random, TestMember m)
{
    static const wchar_t* const HOLDS[] = {L"Free", L"Free", L"F1L", L"F2L", L"F12L", L"Pinned", L"FCL"};
    const auto any = [&]() {
        return HOLDS[std::uniform_int_distribution<std::size_t>(0, std::size(HOLDS) - 1)(random)];
    };
    const auto one = [&](int n) { return std::uniform_int_distribution<int>(0, n - 1)(random) == 0; };
    m.points.front().SetRestraint(Restraint(one(6) ? L"Free" : L"Pinned"));
    for (std::size_t i = 1; i + 1 < m.points.size(); ++i)
        m.points[i].SetRestraint(Restraint(any()));
    for (CSubSpan& s : m.subSpans)
        s.SetRestraint(Restraint(one(2) ? L"Free" : one(2) ? L"F1L" : one(2) ? L"F2L" : L"FCL"));
    return m;
}

/// The member, of two sub-spans at least, with a lateral restraint more at one of its inner points or along one of its sub-spans.
inline TestMember WithOneMore(std::mt19937& random, TestMember m)
{
    static const wchar_t* const MORE[] = {L"F1L", L"F2L", L"F12L", L"TR F1L"};
    const CRestraint more = Restraint(MORE[std::uniform_int_distribution<std::size_t>(0, std::size(MORE) - 1)(random)]);
    const auto place = std::uniform_int_distribution<std::size_t>(0, m.points.size() + m.subSpans.size() - 3)(random);
    const auto add = [&](auto& to) {
        CRestraint r = to.GetRestraint();
        r.Add(more.RestFlag());
        to.SetRestraint(r);
    };
    if (place + 2 < m.points.size())
        add(m.points[place + 1]);
    else
        add(m.subSpans[place + 2 - m.points.size()]);
    return m;
}

} // namespace Keltrix::TestKit
