#pragma once

// Members in equilibrium for the tests of diagrams and stretches.

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "keltrix/steel/Steel.h"

namespace DesignTest {

using namespace Keltrix;
using Steel::CMemberPoint;
using Steel::CRestraint;
using Steel::CSubSpan;

struct Member {
    std::vector<CMemberPoint> points;
    std::vector<CSubSpan> subSpans;

    double Length() const { return points.back().GetPos() - points.front().GetPos(); }
};

inline CRestraint Restraint(const wchar_t* text)
{
    CRestraint r;
    r.SetDescription(CString(text));
    return r;
}

inline void AddPoint(Member& m, double x, const wchar_t* restraint)
{
    CMemberPoint p;
    p.Set1Index(static_cast<int>(m.points.size()) + 1);
    p.SetPos(x);
    p.SetRestraint(Restraint(restraint));
    m.points.push_back(p);
}

/// A sub-span with end values about the major axis: Fz and Myy.
inline void AddSubSpan(Member& m, double shearLeft, double shearRight, double momentLeft, double momentRight,
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
inline Member RandomMember(std::mt19937& random)
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
    Member m;
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
inline Member Divided(const Member& m, std::size_t k, double s)
{
    Member d = m;
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
inline Member Mirrored(const Member& m)
{
    Member r;
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

} // namespace DesignTest
