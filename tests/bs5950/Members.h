#pragma once

// Members made by hand for the tests of the BS 5950-1:2000 module.

#include <cmath>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "keltrix/bs5950/BS5950.h"

namespace BS5950Test {

using namespace Keltrix;
using namespace Keltrix::BS5950;
using Steel::CMemberPoint;
using Steel::CMemberResult;
using Steel::CRestraint;
using Steel::CSubSpan;
using Vector = Vec3<double>;

inline CSteelGrade GradeNamed(const wchar_t* name) { return CSteelGrade(CString(name), 0.0, 0.0, 0.0, 1.0); }

inline SectionProperties PropertiesOf(const wchar_t* section, int type = -1)
{
    CSection s{CString(section)};
    if (type >= 0) {
        CSecComp c = s.Component(0);
        c.SetType(type);
        s.SetComponent(0, c);
    }
    return MakeProperties(s, nullptr).value();
}

inline Material SteelOf(const wchar_t* grade, const SectionProperties& s)
{
    return MakeMaterial(GradeNamed(grade), s.thickest);
}

/// A member by its points and by the functions of force and moment along it.
struct Case {
    const wchar_t* section = L"UB 457x191x67";
    const wchar_t* grade = L"S275";
    int type = SEC_ROLLED;
    std::vector<std::pair<double, const wchar_t*>> points{{0.0, L"Pinned"}, {6.0, L"Pinned"}};
    const wchar_t* along = L"Free";          ///< continuous restraint of every sub-span
    std::vector<const wchar_t*> alongEach{}; ///< or of each
    double loadHeight = 0.0;                 ///< at every point
    std::function<Vector(double)> force = [](double) { return Vector(0, 0, 0); };
    std::function<Vector(double)> moment = [](double) { return Vector(0, 0, 0); };
    double netGross = 1.0;
    double plasElas = 1.2;
    int option = CSteelMemberBS5950::SIMPLIFIED;
    double scale = 1.0;
};

inline CRestraint RestraintNamed(const wchar_t* name)
{
    CRestraint r;
    if (!r.SetDescription(CString(name))) throw std::runtime_error("restraint of a test is not understood");
    return r;
}

inline Vector Scaled(const Vector& v, double k) { return {v.x * k, v.y * k, v.z * k}; }

/// A member that is set up, checked or not yet, with its result.
class Checked {
public:
    explicit Checked(const Case& given, bool text = true)
    {
        member.SetDesOpt(given.option);
        if (!text) result.EnableText(false);
        member.SetResult(&result);
        CSection section{CString(given.section)};
        CSecComp component = section.Component(0);
        component.SetType(given.type);
        component.SetNetGross(given.netGross);
        component.SetPlasElas(given.plasElas);
        section.SetComponent(0, component);
        if (!member.SetKeltrixSec(section)) throw std::runtime_error("section of a test is refused");
        if (!member.SetGrade(GradeNamed(given.grade))) throw std::runtime_error("grade of a test is refused");
        std::vector<CMemberPoint> points;
        std::vector<CSubSpan> subs;
        const double tiny = 1e-9;
        for (std::size_t i = 0; i < given.points.size(); ++i) {
            CMemberPoint p;
            p.Set1Index(static_cast<int>(i) + 1);
            p.SetPos(given.points[i].first);
            CRestraint r = RestraintNamed(given.points[i].second);
            r.SetLoadHeight(given.loadHeight);
            p.SetRestraint(r);
            points.push_back(p);
            if (i + 1 == given.points.size()) break;
            const double a = given.points[i].first;
            const double b = given.points[i + 1].first;
            CSubSpan s;
            s.Set1Index(static_cast<int>(i) + 1);
            s.SetForcesAll(Scaled(given.force(a + tiny), given.scale), Scaled(given.force(b - tiny), given.scale));
            s.SetMomentsAll(Scaled(given.moment(a), given.scale), Scaled(given.moment(b), given.scale));
            s.SetRestraint(RestraintNamed(given.alongEach.empty() ? given.along : given.alongEach[i]));
            subs.push_back(s);
        }
        member.SetMemberPointVec(points);
        member.SetSubSpanVec(subs);
    }

    bool Check() { return member.Check(); }
    const LedgerEntry& Entry(Rule rule) const
    {
        const LedgerEntry* e = member.Checks().Find(rule);
        if (!e) throw std::runtime_error("the ledger has no entry of a rule");
        return *e;
    }
    std::vector<SpanResult> Spans(BucklingMode mode) const
    {
        std::vector<SpanResult> spans;
        for (const SpanResult& s : member.Spans())
            if (s.mode == mode) spans.push_back(s);
        return spans;
    }
    std::string Verbose() const { return *result.GetVerbose().ToUtf8(); }
    bool Assumes(const std::wstring& name) const
    {
        for (const Assumption& a : member.Assumptions())
            if (name == a.name) return true;
        return false;
    }

    CMemberResult result;
    CSteelMemberBS5950 member;
};

/// Simply supported span of length L under w (N/m) downwards: Fz = w(x - L/2), Myy = -w x (L - x)/2 (sagging below
/// zero), with an axial force.
inline void Uniform(Case& given, double L, double w, double axial = 0.0)
{
    given.force = [=](double x) { return Vector(axial, 0.0, w * (x - 0.5 * L)); };
    given.moment = [=](double x) { return Vector(0.0, -0.5 * w * x * (L - x), 0.0); };
}

/// Linear moments about both axes from the left to the right end.
inline void EndMoments(Case& given, double L, double xLeft, double xRight, double axial = 0.0, double yLeft = 0.0,
                       double yRight = 0.0)
{
    given.force = [=](double) { return Vector(axial, -(yRight - yLeft) / L, (xRight - xLeft) / L); };
    given.moment = [=](double x) {
        return Vector(0.0, xLeft + (xRight - xLeft) * x / L, yLeft + (yRight - yLeft) * x / L);
    };
}

} // namespace BS5950Test
