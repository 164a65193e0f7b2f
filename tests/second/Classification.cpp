// (3) Classes by Tables 11 and 12, effective plastic moduli (3.5.6), effective areas and the reduced design strength (3.6).

#include <algorithm>
#include <cmath>

#include "Second.h"

namespace Second {

namespace {

struct Plate {
    double ratio = 0.0;
    double limit[3] = {0.0, 0.0, 0.0};
    bool flange = false;

    int Class() const
    {
        for (int i = 3; i > 0; --i)
            if (ratio > limit[i - 1] * (1.0 + 1e-9)) return i + 1;
        return 1;
    }
    double Reduction() const { return Class() < 4 ? 1.0 : (limit[2] / ratio) * (limit[2] / ratio); }
};

/// What the plates of a section need to be classed.
struct Work {
    const Section& s;
    const Properties& p;
    const Steel& steel;
    const Actions& a;
    double eps, py, Fc; ///< Fc compression above zero

    /// Stress at a height above the bottom, compression above zero; the minor-axis moment the worse way at a distance
    /// from the y-y axis.
    double Stress(double y, double xFar = 0.0) const
    {
        return Fc / p.A - a.Mx * (y - p.cy) / p.Ix + std::fabs(a.My) * xFar / p.Iy;
    }
    bool Compressed(double stress) const { return stress > 1e-9 * py; }

    double R1(double depth, double t, double webs = 1.0, double flanges = 0.0) const
    {
        return std::clamp(Fc / (webs * depth * t * py) + flanges / (depth * t), -1.0, 1.0);
    }
    double R2() const { return Fc / (p.A * py); }
    double BendingWeb() const { return (s.shape == Shape::Box && s.make == Make::Formed ? 105.0 : 120.0) * eps; }
    Plate Outstand(double ratio) const
    {
        const bool welded = s.make == Make::Welded;
        return {ratio, {(welded ? 8 : 9) * eps, (welded ? 9 : 10) * eps, (welded ? 13 : 15) * eps}, true};
    }
};

double Ratio(double limit, double divisor) { return divisor > 1e-12 ? limit / divisor : INF; }

/// Webs of Table 11: 80ε/(1+r1), 100ε/(1+1.5 r1) or 100ε/(1+r1), 120ε/(1+2 r2), none below 40ε.
Plate Web(double ratio, double r1, double r2, double eps)
{
    const double least = 40.0 * eps;
    return {ratio,
            {std::max(least, Ratio(80 * eps, 1 + r1)),
             std::max(least, Ratio(100 * eps, r1 > 0 ? 1 + 1.5 * r1 : 1 + r1)),
             std::max(least, Ratio(120 * eps, 1 + 2 * r2))},
            false};
}

/// Walls of Table 12.
Plate HollowWeb(double ratio, double r1, double r2, double eps, bool formed)
{
    const double k = formed ? 0.875 : 1.0, least = 40.0 * k * eps;
    return {ratio,
            {std::max(least, Ratio(64 * k * eps, 1 + 0.6 * r1)), std::max(least, Ratio(80 * k * eps, 1 + r1)),
             std::max(least, Ratio(120 * k * eps, 1 + 2 * r2))},
            false};
}

Plate HollowFlange(double ratio, double webRatio, double eps, bool formed)
{
    if (formed)
        return {ratio,
                {std::min(26 * eps, 72 * eps - webRatio), std::min(28 * eps, 54 * eps - 0.5 * webRatio), 35 * eps},
                true};
    return {ratio,
            {std::min(28 * eps, 80 * eps - webRatio), std::min(32 * eps, 62 * eps - 0.5 * webRatio), 40 * eps},
            true};
}

/// r2 of a web between two heights, the bending stress scaled until the more compressed edge is at py (3.5.5).
double EdgeR2(const Work& w, double y1, double y2)
{
    const double compressed = w.a.Mx < 0.0 ? y1 : y2, other = w.a.Mx < 0.0 ? y2 : y1;
    if (w.a.Mx == 0.0) return w.R2();
    const double axial = w.Fc / w.p.A, e1 = compressed - w.p.cy, e2 = other - w.p.cy;
    const double f2 = axial + (w.py - axial) * e2 / e1;
    return 0.5 * (w.py + f2) / w.py;
}

std::vector<Plate> PlatesI(const Work& w)
{
    const Section& s = w.s;
    const Properties& p = w.p;
    std::vector<Plate> plates;
    const double top = w.Stress(s.D, 0.5 * s.B), bottom = w.Stress(0.0, 0.5 * s.B2); // at their outer faces
    if (w.Compressed(top)) plates.push_back(w.Outstand(p.b / s.T));
    if (w.Compressed(bottom)) plates.push_back(w.Outstand(p.b2 / s.T2));
    const double fillet = s.make == Make::Welded ? 0.0 : s.r;
    const double y1 = s.D - s.T - fillet, y2 = s.T2 + fillet;
    if (!w.Compressed(std::max(w.Stress(s.D), w.Stress(0.0)))) return plates; // by the outer faces, on the safe side
    if (s.EqualFlanges()) {
        plates.push_back(Web(p.d / s.t, w.R1(p.d, s.t), w.R2(), w.eps));
        return plates;
    }
    const double difference = s.B2 * s.T2 - s.B * s.T; // tension less compression flange, the top one compressed
    if (w.a.Mx <= 0.0) plates.push_back(Web(p.d / s.t, w.R1(p.d, s.t, 1.0, difference), EdgeR2(w, y1, y2), w.eps));
    if (w.a.Mx >= 0.0) plates.push_back(Web(p.d / s.t, w.R1(p.d, s.t, 1.0, -difference), EdgeR2(w, y1, y2), w.eps));
    return plates;
}

/// Flanges and web together, by the outermost fibre of the section.
std::vector<Plate> PlatesChannel(const Work& w)
{
    const Section& s = w.s;
    const double far = std::max(s.B - w.p.cx, w.p.cx);
    if (!w.Compressed(std::max(w.Stress(s.D, far), w.Stress(0.0, far)))) return {};
    return {w.Outstand(w.p.b / s.T), {w.p.d / s.t, {40 * w.eps, 40 * w.eps, 40 * w.eps}, false}};
}

std::vector<Plate> PlatesTee(const Work& w)
{
    const Section& s = w.s;
    std::vector<Plate> plates;
    if (w.Compressed(w.Stress(s.D, 0.5 * s.B))) // at its outer face, as all flanges are
        plates.push_back(w.Outstand(w.p.b / s.T));
    // The stem is an outstand: compression next to the flange alone does not make its free edge buckle.
    if (w.Compressed(w.Stress(0.0)))
        plates.push_back({s.D / s.t, {8 * w.eps, 9 * w.eps, (s.make == Make::Welded ? 13 : 18) * w.eps}, false});
    return plates;
}

/// Mx and My of the actions are about u-u and v-v. How the angle is turned is not known: both geometric moments bend it about u-u
/// and v-v the worse way, and the extreme stresses of both add.
std::vector<Plate> PlatesAngle(const Work& w)
{
    const Properties& p = w.p;
    const Section& s = w.s;
    const double e = w.eps, c = std::cos(p.alpha), si = std::sin(p.alpha);
    const double x = std::fabs(c * w.a.Mx - si * w.a.My), y = std::fabs(si * w.a.Mx + c * w.a.My);
    const double worst =
        w.Fc / p.A + (std::fabs(c) * x + std::fabs(si) * y) / p.Zu + (std::fabs(si) * x + std::fabs(c) * y) / p.Zv;
    if (!w.Compressed(worst)) return {};
    const bool axial = w.Fc > 0.0;
    const double l1 = axial ? 15 * e : 9 * e, l2 = axial ? 15 * e : 10 * e;
    std::vector<Plate> plates{{s.D / s.t, {l1, l2, 15 * e}, false}, {s.B / s.t, {l1, l2, 15 * e}, false}};
    if (axial) plates.push_back({(s.B + s.D) / s.t, {24 * e, 24 * e, 24 * e}, false});
    return plates;
}

/// The two kinds of wall for bending about one axis: the flange's and the web's width and thickness.
void AddWalls(const Work& w, double b, double T, double d, double t, bool flange, bool web, std::vector<Plate>& plates)
{
    const double r1 = w.R1(d, t, 2.0), e = w.eps;
    if (w.s.make == Make::Welded) {
        if (flange) plates.push_back({b / T, {28 * e, 32 * e, 40 * e}, true});
        if (web) plates.push_back(Web(d / t, r1, w.R2(), e));
        return;
    }
    const bool formed = w.s.make == Make::Formed;
    if (flange) plates.push_back(HollowFlange(b / T, d / t, e, formed));
    if (web) plates.push_back(HollowWeb(d / t, r1, w.R2(), e, formed));
}

std::vector<Plate> PlatesBox(const Work& w, Bending axis)
{
    const Section& s = w.s;
    const Properties& p = w.p;
    std::vector<Plate> plates;
    const double corner = w.Fc / p.A + std::fabs(w.a.Mx) / p.Zx + std::fabs(w.a.My) / p.Zy;
    const bool any = w.Compressed(corner);
    if (axis == Bending::Major) AddWalls(w, p.b, s.T, p.d, s.t, any, any, plates);
    if (axis == Bending::Minor) AddWalls(w, p.d, s.t, p.b, s.T, any, any, plates);
    return plates;
}

std::vector<Plate> PlatesTube(const Work& w)
{
    const double e2 = w.eps * w.eps, ratio = w.s.D / w.s.t;
    std::vector<Plate> plates;
    const bool bent = w.a.Mx != 0.0 || w.a.My != 0.0;
    if (bent && w.Compressed(w.Fc / w.p.A + std::hypot(w.a.Mx, w.a.My) / w.p.Zx))
        plates.push_back({ratio, {40 * e2, 50 * e2, 140 * e2}, false});
    if (w.Fc > 0.0) plates.push_back({ratio, {80 * e2, 80 * e2, 80 * e2}, false});
    return plates;
}

/// Clause 3.5.6.2, 3.5.6.3: share of S - Z that counts, by the web (its power 2 for I sections) and the flange.
double Share(const std::vector<Plate>& plates, double power)
{
    double share = 1.0;
    for (const Plate& plate : plates) {
        const double n = plate.flange ? 1.0 : power;
        const double above = std::pow(plate.limit[2] / plate.ratio, n) - 1.0;
        const double range = std::pow(plate.limit[2] / plate.limit[1], n) - 1.0;
        const double own = plate.ratio <= plate.limit[1] ? 1.0 : range > 0.0 ? above / range : 0.0;
        share = std::min(share, std::clamp(own, 0.0, 1.0));
    }
    return share;
}

/// Clause 3.6.2.2: area of a doubly symmetric section under pure compression, what is beyond the class 3 limits left out.
double EffectiveArea(const Work& w)
{
    const Section& s = w.s;
    const Properties& p = w.p;
    const double e = w.eps;
    double A = p.A;
    if (s.shape == Shape::I) {
        const double flange = (s.make == Make::Welded ? 13 : 15) * e * s.T, web = 40 * e * s.t;
        A -= 4.0 * s.T * std::max(0.0, p.b - flange);
        A -= s.t * std::max(0.0, p.d - web);
        return A;
    }
    const double k = (s.make == Make::Formed ? 35 : 40) * e;
    A -= 2.0 * s.T * std::max(0.0, p.b - k * s.T);
    A -= 2.0 * s.t * std::max(0.0, p.d - k * s.t);
    return A;
}

void SetTube(const Work& w, Class& c)
{
    const double e2 = w.eps * w.eps, ratio = w.s.D / w.s.t;
    const Properties& p = w.p;
    c.Wx = c.Wy = p.Sx;
    c.pyrX = c.pyrY = c.pyAxial = w.py;
    if (c.cls == 3 && w.s.make == Make::Welded) { // 3.5.6.4 is for structural hollow sections
        c.Wx = c.Wy = p.Zx;
        c.plasticX = c.plasticY = false;
    } else if (c.cls == 3) {
        const double k = ratio < 140.0 * e2 ? 1.485 * (std::sqrt(140.0 * e2 / ratio) - 1.0) : 0.0;
        c.Wx = c.Wy = p.Zx + std::clamp(k, 0.0, 1.0) * (p.Sx - p.Zx);
    }
    if (c.cls == 4 && ratio > 240.0 * e2) { // beyond 3.6.6: reduced design strength
        c.Wx = c.Wy = p.Zx;
        c.plasticX = c.plasticY = false;
        c.pyrX = c.pyrY = c.pyAxial = w.py * std::pow((w.Fc > 0.0 ? 80.0 : 140.0) * e2 / ratio, 2.0);
    } else if (c.cls == 4) {
        const double k = std::min(1.0, std::pow(140.0 * e2 / ratio, 0.25));
        c.Wx = c.Wy = c.Zx = c.Zy = k * p.Zx;
        c.plasticX = c.plasticY = false;
        if (w.Fc > 0.0) c.Aeff = p.A * std::min(1.0, std::sqrt(80.0 * e2 / ratio));
    }
}

void SetSemiCompact(const Work& w, const std::vector<Plate>& x, const std::vector<Plate>& y, Class& c)
{
    const Section& s = w.s;
    const Properties& p = w.p;
    c.Wx = p.Zx, c.Wy = p.Zy;
    c.plasticX = c.plasticY = false;
    const bool rolledBox = s.shape == Shape::Box && s.make != Make::Welded;
    if (!(s.shape == Shape::I && s.EqualFlanges()) && !rolledBox) return;
    c.plasticX = c.plasticY = true;
    c.Wx = p.Zx + Share(x, rolledBox ? 1.0 : 2.0) * (p.Sx - p.Zx);
    std::vector<Plate> minor = y;
    if (!rolledBox)
        minor.erase(std::remove_if(minor.begin(), minor.end(), [](const Plate& q) { return !q.flange; }), minor.end());
    c.Wy = p.Zy + Share(minor, 1.0) * (p.Sy - p.Zy);
}

/// Clause 3.6.5: (β3/β)² of the slender plates. `webLimit` above zero replaces the class 3 limit of webs.
double ReductionBy(const std::vector<Plate>& plates, double webLimit)
{
    double k = 1.0;
    for (Plate plate : plates) {
        if (webLimit > 0.0 && !plate.flange) plate.limit[2] = webLimit;
        k = std::min(k, plate.Reduction());
    }
    return k;
}

void SetSlender(const Work& w, const std::vector<Plate>& all, const std::vector<Plate>& x, const std::vector<Plate>& y,
                Class& c)
{
    const Section& s = w.s;
    const Properties& p = w.p;
    c.Wx = s.shape == Shape::Angle ? p.Zu : p.Zx;
    c.Wy = s.shape == Shape::Angle ? p.Zv : p.Zy;
    c.plasticX = c.plasticY = false;
    for (const Plate& plate : x)
        c.flangeSlender = c.flangeSlender || (plate.flange && plate.Class() == 4);
    for (const Plate& plate : y)
        c.flangeSlenderY = c.flangeSlenderY || (plate.flange && plate.Class() == 4);
    c.pyrX = c.pyrY = c.pyAxial = ReductionBy(all, 0.0) * w.py;
    if ((s.shape == Shape::I && s.EqualFlanges()) || s.shape == Shape::Box) {
        // The compression goes by an effective area. In bending a web that is not slender in bending alone stays whole, and
        // the web of an I section has no part in bending about y-y (3.6.2.3).
        c.pyAxial = w.py;
        c.Aeff = EffectiveArea(w);
        c.pyrX = ReductionBy(x, w.BendingWeb()) * w.py;
        c.pyrY = ReductionBy(y, s.shape == Shape::I ? INF : w.BendingWeb()) * w.py;
    }
    if (s.shape == Shape::I && s.EqualFlanges()) { // each moment by itself, whatever else is in tension
        const Plate flange = w.Outstand(p.b / s.T);
        c.pyrX = ReductionBy({flange, {p.d / s.t, {0.0, 0.0, w.BendingWeb()}, false}}, 0.0) * w.py;
        c.pyrY = ReductionBy({flange}, 0.0) * w.py;
    }
    if (s.shape == Shape::I && !s.EqualFlanges()) {
        // Compression alone: both flanges, and the web at its limit of uniform compression.
        const Plate web{p.d / s.t, {40 * w.eps, 40 * w.eps, 40 * w.eps}, false};
        c.pyAxial = ReductionBy({w.Outstand(p.b / s.T), w.Outstand(p.b2 / s.T2), web}, 0.0) * w.py;
    }
    if (s.shape == Shape::Tee || (s.shape == Shape::I && !s.EqualFlanges())) {
        // Neither moment alone may find more than this.
        const auto alone = [&](double Mx, double My) {
            const Actions moment{0.0, Mx, My, 0.0, 0.0};
            const Work one{s, p, w.steel, moment, w.eps, w.py, 0.0};
            return ReductionBy(s.shape == Shape::Tee ? PlatesTee(one) : PlatesI(one), 0.0) * w.py;
        };
        if (w.a.Mx != 0.0) c.pyrX = std::min(c.pyrX, alone(std::copysign(1e-3 * w.py * p.Zx, w.a.Mx), 0.0));
        if (w.a.My != 0.0) c.pyrY = std::min(c.pyrY, alone(0.0, 1e-3 * w.py * p.Zy));
    }
    if (s.shape == Shape::Channel || s.shape == Shape::Tee) {
        // Compression alone: all of its plates.
        Actions squash;
        squash.F = -p.A * w.py;
        const Work alone{s, p, w.steel, squash, w.eps, w.py, -squash.F};
        c.pyAxial = ReductionBy(s.shape == Shape::Tee ? PlatesTee(alone) : PlatesChannel(alone), 0.0) * w.py;
    }
    if (s.shape == Shape::Angle && s.B == s.D && s.B / s.t <= 20.0 * w.eps) {
        // 3.6.4; in bending the legs count one by one.
        std::vector<Plate> legs = all;
        if (w.Fc > 0.0) legs.pop_back();
        c.pyrX = c.pyrY = ReductionBy(legs, 0.0) * w.py;
        c.pyAxial = w.py;
        c.Aeff = p.A * std::min(1.0, 12.0 * w.eps / (s.B / s.t));
    }
}

} // namespace

Class Classify(const Section& s, const Properties& p, const Steel& steel, const Actions& a)
{
    const Work w{s, p, steel, a, steel.eps, steel.py, -a.F};
    std::vector<Plate> x, y;
    const bool onlyY = a.My != 0.0 && a.Mx == 0.0;
    switch (s.shape) {
    case Shape::I:
        x = y = PlatesI(w);
        break;
    case Shape::Channel:
        x = PlatesChannel(w);
        break;
    case Shape::Tee:
        x = PlatesTee(w);
        break;
    case Shape::Angle:
        x = PlatesAngle(w);
        break;
    case Shape::Box:
        x = PlatesBox(w, Bending::Major);
        y = PlatesBox(w, Bending::Minor);
        break;
    case Shape::Tube:
        x = PlatesTube(w);
        break;
    }
    Class c;
    std::vector<Plate> all;
    const bool box = s.shape == Shape::Box;
    if (!box || !onlyY) all.insert(all.end(), x.begin(), x.end());
    if (box && a.My != 0.0) all.insert(all.end(), y.begin(), y.end());
    for (const Plate& plate : all)
        c.cls = std::max(c.cls, plate.Class());
    const bool angle = s.shape == Shape::Angle;
    c.pyrX = c.pyrY = c.pyAxial = steel.py;
    c.Aeff = p.A;
    c.Zx = angle ? p.Zu : p.Zx;
    c.Zy = angle ? p.Zv : p.Zy;
    c.Wx = angle ? p.Zu : p.Sx;
    c.Wy = angle ? p.Zv : p.Sy;
    c.plasticX = c.plasticY = !angle;
    if (s.shape == Shape::Tube) {
        SetTube(w, c);
        return c;
    }
    if (c.cls == 3 && !angle) SetSemiCompact(w, x, y, c);
    if (c.cls == 4) SetSlender(w, all, x, y, c);
    return c;
}

} // namespace Second
