#pragma once

// Members made by hand for the layout tests.

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <ostream>
#include <string>
#include <vector>

#include "keltrix/steel/MemberLayout.h"

#include "restraint/RestraintOracle.h"

namespace LayoutSupport {

using Keltrix::CDesFormat;
using Keltrix::CString;
using Keltrix::Vec3;
using Keltrix::Steel::CMemberPoint;
using Keltrix::Steel::CRestraint;
using Keltrix::Steel::CSpan;
using Keltrix::Steel::CSubSpan;
using RestraintOracle::Identical;
using RestraintOracle::SameDouble;
using RestraintOracle::Utf8;
using RestraintOracle::Wide;

using Vector = Vec3<double>;

inline constexpr Vector zero(0.0, 0.0, 0.0);

inline constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
inline constexpr double infinity = std::numeric_limits<double>::infinity();

/// A vector with its own text in messages, equal where the components are or where both are not-a-number.
struct Shown {
    explicit Shown(const Vector& shown) : v(shown) {}
    Vector v;
    friend bool operator==(const Shown& a, const Shown& b)
    {
        return SameDouble(a.v.x, b.v.x) && SameDouble(a.v.y, b.v.y) && SameDouble(a.v.z, b.v.z);
    }
    friend std::ostream& operator<<(std::ostream& out, const Shown& a)
    {
        const auto precision = out.precision(17);
        out << '(' << a.v.x << ", " << a.v.y << ", " << a.v.z << ')';
        out.precision(precision);
        return out;
    }
};

inline CMemberPoint PointAt(int index, double position, const CRestraint& restraint = {})
{
    CMemberPoint point;
    point.Set1Index(index);
    point.SetPos(position);
    point.SetRestraint(restraint);
    return point;
}

inline CSubSpan SubSpanWith(int index, const Vector& forceL, const Vector& forceR, const Vector& momentL,
                            const Vector& momentR, const CRestraint& restraint = {})
{
    CSubSpan subSpan;
    subSpan.Set1Index(index);
    subSpan.SetForcesAll(forceL, forceR);
    subSpan.SetMomentsAll(momentL, momentR);
    subSpan.SetRestraint(restraint);
    return subSpan;
}

/// Points at the positions and a sub-span without forces between each two of them.
struct Layout {
    std::vector<CMemberPoint> points;
    std::vector<CSubSpan> subSpans;

    Layout() = default;
    explicit Layout(const std::vector<double>& positions)
    {
        for (const double position : positions) {
            points.push_back(PointAt(static_cast<int>(points.size()) + 1, position));
            if (points.size() < positions.size()) {
                subSpans.emplace_back();
                subSpans.back().Set1Index(static_cast<int>(points.size()));
            }
        }
    }

    CSpan Span(int left, int right) const { return {&points, &subSpans, left, right}; }
    CSpan Whole() const { return Span(0, static_cast<int>(points.size()) - 1); }

    /// End values of one component of the forces, sub-span by sub-span: left, right, left, right ...
    Layout& Fy(const std::vector<double>& values) { return Fill(values, false, &Vector::y); }
    Layout& Fz(const std::vector<double>& values) { return Fill(values, false, &Vector::z); }
    Layout& Fx(const std::vector<double>& values) { return Fill(values, false, &Vector::x); }
    Layout& Myy(const std::vector<double>& values) { return Fill(values, true, &Vector::y); }
    Layout& Mzz(const std::vector<double>& values) { return Fill(values, true, &Vector::z); }

    std::string Describe() const
    {
        std::string text = "positions";
        for (const CMemberPoint& point : points)
            text += ' ' + Number(point.GetPos());
        const auto end = [](const char* name, const Vector& v) {
            return std::string(name) + '(' + Number(v.x) + ", " + Number(v.y) + ", " + Number(v.z) + ')';
        };
        for (const CSubSpan& subSpan : subSpans)
            text += "\n  sub-span" + end(" FL", subSpan.GetForcesLeft()) + end(" FR", subSpan.GetForcesRight()) +
                    end(" ML", subSpan.GetMomentsLeft()) + end(" MR", subSpan.GetMomentsRight());
        return text;
    }

    static std::string Number(double value)
    {
        std::array<char, 40> text{};
        std::snprintf(text.data(), text.size(), "%.17g", value);
        return text.data();
    }

private:
    Layout& Fill(const std::vector<double>& values, bool moments, double Vector::*component)
    {
        for (std::size_t i = 0; 2 * i + 1 < values.size(); ++i) {
            CSubSpan& subSpan = subSpans.at(i);
            Vector left = moments ? subSpan.GetMomentsLeft() : subSpan.GetForcesLeft();
            Vector right = moments ? subSpan.GetMomentsRight() : subSpan.GetForcesRight();
            left.*component = values[2 * i];
            right.*component = values[2 * i + 1];
            if (moments)
                subSpan.SetMomentsAll(left, right);
            else
                subSpan.SetForcesAll(left, right);
        }
        return *this;
    }
};

} // namespace LayoutSupport
