// (4) Cross-section checks: 4.2.3, 4.2.5, 4.4, 4.6, 4.8.2, 4.8.3.2, Annexes H.1 and I.2.

#include <algorithm>
#include <cmath>

#include "Second.h"

namespace Second {

namespace {

double AreaVertical(const Section& s, const Properties& p)
{
    const bool welded = s.make == Make::Welded;
    switch (s.shape) {
    case Shape::I:
    case Shape::Channel:
        return s.t * (welded ? s.D - s.T - (s.shape == Shape::I ? s.T2 : s.T) : s.D);
    case Shape::Tee:
        return s.t * (welded ? s.D - s.T : s.D);
    case Shape::Angle:
        return 0.9 * s.D * s.t;
    case Shape::Box:
        return welded ? 2.0 * s.t * (s.D - 2.0 * s.T) : p.A * s.D / (s.D + s.B);
    default:
        return 0.6 * p.A;
    }
}

double AreaAcross(const Section& s, const Properties& p)
{
    switch (s.shape) {
    case Shape::I:
        return 0.9 * (s.B * s.T + s.B2 * s.T2);
    case Shape::Channel:
        return 0.9 * 2.0 * s.B * s.T;
    case Shape::Tee:
        return 0.9 * s.B * s.T;
    case Shape::Angle:
        return 0.9 * s.B * s.t;
    case Shape::Box:
        return s.make == Make::Welded ? 2.0 * s.T * (s.B - 2.0 * s.t) : p.A * s.B / (s.D + s.B);
    default:
        return 0.6 * p.A;
    }
}

/// Annex H.1 without stiffeners.
double ShearBucklingStrength(double slenderness, double py)
{
    const double pv = 0.6 * py, qe = 1e6 * (1000.0 / slenderness) * (1000.0 / slenderness);
    const double w = std::sqrt(pv / qe);
    if (w <= 0.8) return pv;
    if (w < 1.25) return (13.48 - 5.6 * w) / 9.0 * pv;
    return 0.9 / w * pv;
}

double SimpleShearBuckling(const Section& s, const Steel& steel, double d, double t, double webs)
{
    const double limit = (s.make == Make::Welded ? 62.0 : 70.0) * steel.eps;
    return d / t > limit ? webs * d * t * ShearBucklingStrength(d / t, steel.py) : 0.0;
}

/// Clause 4.6.3.1, bolted: the larger possible part of the section is taken as not connected.
double EccentricTension(const Section& s, const Properties& p, double py, double Ae)
{
    double connected = 0.0;
    if (s.shape == Shape::Angle) connected = s.t * std::min(s.D, s.B);
    if (s.shape == Shape::Channel) connected = s.t * s.D;
    if (s.shape == Shape::Tee) connected = s.T * s.B;
    if (connected == 0.0) return 0.0;
    return py * std::max(0.0, Ae - 0.5 * (p.A - connected));
}

/// Plastic modulus of two flanges without their web, which is as deep as the section where it is rolled.
double PlasticOfFlanges(const Section& s)
{
    const double web = s.make == Make::Welded ? 0.0 : s.t;
    const double A1 = (s.B - web) * s.T, A2 = (s.B2 - web) * s.T2, hs = s.D - 0.5 * (s.T + s.T2);
    const double small = std::min(A1, A2), big = std::max(A1, A2), Tbig = A1 >= A2 ? s.T : s.T2;
    // Equal-area axis in the larger flange, at e from its outer face.
    const double e = 0.5 * (small + big) / big * Tbig, far = Tbig - e;
    const double toSmall = hs + 0.5 * Tbig - e;
    return small * toSmall + big * (e * e + far * far) / (2.0 * Tbig);
}

/// Plastic modulus of the shear area along the web.
double ShearModulusX(const Section& s, const Properties& p)
{
    const bool welded = s.make == Make::Welded;
    switch (s.shape) {
    case Shape::I: {
        if (!s.EqualFlanges()) return p.Sx - PlasticOfFlanges(s);
        const double h = welded ? s.D - 2.0 * s.T : s.D;
        return 0.25 * s.t * h * h;
    }
    case Shape::Channel: {
        const double h = welded ? s.D - 2.0 * s.T : s.D;
        return 0.25 * s.t * h * h;
    }
    case Shape::Tee:
        return p.Sx - 0.25 * s.B * s.T * s.T;
    case Shape::Angle:
        return 1.5 * p.Zu;
    case Shape::Box:
        return 0.25 * AreaVertical(s, p) * (welded ? s.D - 2.0 * s.T : s.D);
    default:
        return p.Sx;
    }
}

double ShearModulusY(const Section& s, const Properties& p)
{
    switch (s.shape) {
    case Shape::I:
        return 0.9 * 0.25 * (s.T * s.B * s.B + s.T2 * s.B2 * s.B2);
    case Shape::Channel:
        return p.Sy; // the web has a part in carrying it: all is lost at full shear
    case Shape::Tee:
        return 0.9 * 0.25 * s.T * s.B * s.B;
    case Shape::Angle:
        return 1.5 * p.Zv;
    case Shape::Box:
        return 0.25 * AreaAcross(s, p) * (s.make == Make::Welded ? s.B - 2.0 * s.t : s.B);
    default:
        return p.Sy;
    }
}

double HighShear(double V, double Pv)
{
    if (V <= 0.6 * Pv) return 0.0;
    if (V >= Pv) return 1.0;
    return (2.0 * V / Pv - 1.0) * (2.0 * V / Pv - 1.0);
}

/// Clause 4.2.5.2, 4.2.5.3 with the limit of 4.2.5.1.
double OneCapacity(const Basis& b, double pyr, double W, bool plastic, double Sv, double Z, double rho)
{
    const double M = pyr * (W - rho * Sv / (plastic ? 1.0 : 1.5));
    return std::max(0.0, std::min(M, b.member.plasElas * b.steel.py * Z));
}

bool DoublySymmetric(const Section& s)
{
    return (s.shape == Shape::I && s.EqualFlanges()) || s.shape == Shape::Box || s.shape == Shape::Tube;
}

/// Annex I.2: plastic modulus about x left by an axial force n A py; walls t across the axis, flanges B by T.
double ReducedX(const Section& s, const Properties& p, double n)
{
    const double A = p.A, webs = s.shape == Shape::Box ? 2.0 : 1.0;
    if (n <= webs * s.t * (s.D - 2.0 * s.T) / A) return p.Sx - n * n * A * A / (4.0 * webs * s.t);
    return A * A / (4.0 * s.B) * (1.0 - n) * (2.0 * s.B * s.D / A - 1.0 + n);
}

double ReducedY(const Section& s, const Properties& p, double n)
{
    const double A = p.A;
    if (s.shape == Shape::Box) {
        if (n <= 2.0 * s.T * (s.B - 2.0 * s.t) / A) return p.Sy - n * n * A * A / (8.0 * s.T);
        return A * A / (4.0 * s.D) * (1.0 - n) * (2.0 * s.B * s.D / A - 1.0 + n);
    }
    if (n <= s.t * s.D / A) return p.Sy - n * n * A * A / (4.0 * s.D);
    return A * A / (8.0 * s.T) * (1.0 - n) * (4.0 * s.B * s.T / A - 1.0 + n);
}

/// The more exact sum of 4.8.2.3 and 4.8.3.2 b.
double ExactSum(const Basis& b, const Capacity& m, const Actions& a)
{
    const Section& s = b.s;
    const double n = std::min(1.0, std::fabs(a.F) / (b.p.A * b.steel.py));
    double Mrx = m.Mcx, Mry = m.Mcy, z1 = 2.0, z2 = 1.0;
    if (s.shape == Shape::Tube) {
        Mrx = Mry = std::min(m.Mcx, b.steel.py * b.p.Sx * std::cos(0.5 * PI * n));
        z2 = 2.0;
    } else if (a.F != 0.0) {
        Mrx = std::min(m.Mcx, b.steel.py * ReducedX(s, b.p, n));
        Mry = std::min(m.Mcy, b.steel.py * ReducedY(s, b.p, n));
    }
    if (s.shape == Shape::Box) z1 = z2 = 5.0 / 3.0;
    const double x = a.Mx == 0.0 ? 0.0 : Mrx > 0.0 ? std::fabs(a.Mx) / Mrx : INF;
    const double y = a.My == 0.0 ? 0.0 : Mry > 0.0 ? std::fabs(a.My) / Mry : INF;
    // With one moment alone its own ratio says how much is left; it cannot be less with both.
    return std::max({x, y, std::pow(x, z1) + std::pow(y, z2)});
}

Actions WithoutNoise(const Basis& b, Actions a)
{
    const bool angle = b.s.shape == Shape::Angle;
    if (std::fabs(a.F) < 1e-6 * b.p.A * b.steel.py) a.F = 0.0;
    if (std::fabs(a.Mx) < 1e-6 * b.steel.py * (angle ? b.p.Zu : b.p.Zx)) a.Mx = 0.0;
    if (std::fabs(a.My) < 1e-6 * b.steel.py * (angle ? b.p.Zv : b.p.Zy)) a.My = 0.0;
    return a;
}

} // namespace

Basis::Basis(const Member& given, double side) :
    member(given), s(given.section), p(PropertiesOf(given.section)), steel(SteelOf(given.grade, given.section)),
    diagram(given)
{
    if (s.shape == Shape::Angle) diagram = diagram.Turned(p.alpha, side);
    const double Ae = std::min(p.A, steel.Ke * member.netGross * p.A);
    Pt = steel.py * Ae;
    PtEccentric = EccentricTension(s, p, steel.py, Ae);
    Pvy = 0.6 * steel.py * AreaVertical(s, p);
    Pvx = 0.6 * steel.py * AreaAcross(s, p);
    if (s.shape == Shape::I || s.shape == Shape::Channel) VwY = SimpleShearBuckling(s, steel, p.d, s.t, 1.0);
    if (s.shape == Shape::Box) {
        VwY = SimpleShearBuckling(s, steel, p.d, s.t, 2.0);
        VwX = SimpleShearBuckling(s, steel, p.b, s.T, 2.0);
    }
    if (s.shape == Shape::I || s.shape == Shape::Channel || s.shape == Shape::Box)
        thinWeb = s.t < p.d / 250.0 || s.t < p.d / 250.0 * steel.py / 345e6;
}

void Local::Raise(const Local& o)
{
    for (double Local::*u : {&Local::tension, &Local::tie, &Local::compression, &Local::shearMajor, &Local::shearMinor,
                             &Local::shearBuckling, &Local::momentMajor, &Local::momentMinor, &Local::combinedTension,
                             &Local::combinedCompression})
        this->*u = std::max(this->*u, o.*u);
    notEvaluated = notEvaluated || o.notEvaluated;
}

Capacity MomentCapacity(const Basis& b, const Class& c, const Actions& a)
{
    const Section& s = b.s;
    const bool angle = s.shape == Shape::Angle;
    Capacity m;
    double rhoX = HighShear(std::fabs(a.Vy), b.Pvy), rhoY = HighShear(std::fabs(a.Vx), b.Pvx);
    // Shear in either leg of an angle meets both principal moments; a tube knows no direction.
    if (angle) rhoX = rhoY = std::max(rhoX, rhoY);
    if (s.shape == Shape::Tube) rhoX = rhoY = HighShear(std::hypot(a.Vx, a.Vy), b.Pvy);
    m.lowShear = rhoX == 0.0 && rhoY == 0.0;
    m.Mcx = OneCapacity(b, c.pyrX, c.Wx, c.plasticX, ShearModulusX(s, b.p), angle ? b.p.Zu : b.p.Zx, rhoX);
    m.Mcy = OneCapacity(b, c.pyrY, c.Wy, c.plasticY, ShearModulusY(s, b.p), angle ? b.p.Zv : b.p.Zy, rhoY);
    if (b.VwY > 0.0 && std::fabs(a.Vy) > 0.6 * b.VwY && a.Mx != 0.0) {
        m.flangesCarry = s.shape == Shape::I ? s.B * s.T + s.B2 * s.T2 : 2.0 * s.B * s.T;
        m.lowShear = false;
        m.evaluated = !c.flangeSlender;
        const double weaker = s.shape == Shape::I ? std::min(s.B * s.T, s.B2 * s.T2) : s.B * s.T;
        const double hs = s.shape == Shape::Box ? s.D - s.T : b.p.hs;
        m.Mcx = m.evaluated ? weaker * hs * b.steel.py : std::min(m.Mcx, weaker * hs * b.steel.py);
    }
    if (b.VwX > 0.0 && std::fabs(a.Vx) > 0.6 * b.VwX && a.My != 0.0) {
        m.flangesCarry = std::min(m.flangesCarry, 2.0 * s.D * s.t);
        m.lowShear = false;
        m.evaluated = m.evaluated && !c.flangeSlenderY;
        const double alone = s.D * s.t * (s.B - s.t) * b.steel.py;
        m.Mcy = c.flangeSlenderY ? std::min(m.Mcy, alone) : alone;
    }
    return m;
}

Local LocalAt(const Basis& b, const Actions& given)
{
    const Actions a = WithoutNoise(b, given);
    const Class c = Classify(b.s, b.p, b.steel, a);
    const Capacity m = MomentCapacity(b, c, a);
    Local u;
    u.notEvaluated = !m.evaluated;
    if (a.F > 0.0) {
        u.tension = a.F / b.Pt;
        if (b.s.shape == Shape::Angle || b.s.shape == Shape::Channel || b.s.shape == Shape::Tee)
            u.tie = Over(a.F, b.PtEccentric);
    }
    if (a.F < 0.0) u.compression = -a.F / (c.Aeff * c.pyAxial);
    u.shearMajor = std::fabs(a.Vy) / b.Pvy;
    u.shearMinor = std::fabs(a.Vx) / b.Pvx;
    if (b.s.shape == Shape::Tube) {
        const double whole = std::hypot(a.Vx, a.Vy) / b.Pvy;
        u.shearMajor = a.Vy != 0.0 ? whole : 0.0;
        u.shearMinor = a.Vx != 0.0 ? whole : 0.0;
    }
    if (b.VwY > 0.0) u.shearBuckling = std::fabs(a.Vy) / b.VwY;
    if (b.VwX > 0.0) u.shearBuckling = std::max(u.shearBuckling, std::fabs(a.Vx) / b.VwX);
    u.momentMajor = Over(std::fabs(a.Mx), m.Mcx);
    u.momentMinor = Over(std::fabs(a.My), m.Mcy);
    const int kinds = (a.F != 0.0) + (a.Mx != 0.0) + (a.My != 0.0);
    if (kinds < 2) return u;
    // Flanges that alone carry the moment carry the axial force too.
    const double axial =
        m.flangesCarry < INF ? std::fabs(a.F) / (b.steel.py * m.flangesCarry) : u.tension + u.compression;
    double sum = axial + u.momentMajor + u.momentMinor;
    if (b.member.exact && DoublySymmetric(b.s) && c.cls <= 2 && m.lowShear && u.tension + u.compression < 1.0)
        sum = std::max(u.tension + u.compression, ExactSum(b, m, a));
    (a.F > 0.0 ? u.combinedTension : u.combinedCompression) = sum;
    return u;
}

std::vector<Actions> ActionsAt(const Basis& b, int sub, double s)
{
    const auto i = static_cast<std::size_t>(sub);
    const SubSpan& q = b.member.subs[i];
    const double L = b.member.points[i + 1].x - b.member.points[i].x;
    const auto linear = [&](const double(&v)[2]) { return v[0] + s / L * (v[1] - v[0]); };
    const std::vector<double> x = b.diagram.At(Bending::Major, sub, s), y = b.diagram.At(Bending::Minor, sub, s);
    std::vector<Actions> all;
    for (std::size_t k = 0; k < x.size(); ++k)
        for (std::size_t l = 0; l < y.size(); ++l)
            if (b.s.shape != Shape::Angle || k == l)
                all.push_back({linear(q.F), x[k], y[l], linear(q.Fz), linear(q.Fy)});
    return all;
}

std::vector<double> Places(const Basis& b, int sub)
{
    const auto i = static_cast<std::size_t>(sub);
    const double L = b.member.points[i + 1].x - b.member.points[i].x;
    std::vector<double> places{0.0, L};
    for (const Bending axis : {Bending::Major, Bending::Minor})
        for (const double s : b.diagram.Extremes(axis, sub))
            places.push_back(s);
    for (int k = 1; k < 12; ++k)
        places.push_back(L * k / 12.0);
    if (b.s.shape == Shape::Box) // walls are flange or web by the axis of bending
        for (const double s : b.diagram.Zeros(Bending::Minor, sub))
            places.push_back(s);
    if (b.s.shape == Shape::Tee ||
        (b.s.shape == Shape::I && !b.s.EqualFlanges())) { // what is compressed changes beside a zero
        for (const double s : b.diagram.Zeros(Bending::Major, sub))
            places.push_back(s);
        places.insert(places.end(), {0.002 * L, 0.998 * L});
    }
    std::sort(places.begin(), places.end());
    return places;
}

namespace {

Local WorstAt(const Basis& b, int sub, double s)
{
    Local worst;
    for (const Actions& a : ActionsAt(b, sub, s))
        worst.Raise(LocalAt(b, a));
    return worst;
}

/// Places at which the capacity has a kink: the shear at 0.6 Pv, at Pv or at 0.6 Vw.
std::vector<double> Kinks(const Basis& b, int sub)
{
    const auto i = static_cast<std::size_t>(sub);
    const SubSpan& q = b.member.subs[i];
    const double L = b.member.points[i + 1].x - b.member.points[i].x;
    std::vector<double> places;
    const auto add = [&](const double(&V)[2], double level) {
        for (const double sign : {1.0, -1.0})
            if (level > 0.0 && (V[0] - sign * level) * (V[1] - sign * level) < 0.0) {
                const double s = L * (sign * level - V[0]) / (V[1] - V[0]);
                for (const double near : {-1e-7, 0.0, 1e-7})
                    places.push_back(std::clamp(s + near * L, 0.0, L));
            }
    };
    for (const double k : {0.6, 1.0})
        add(q.Fz, k * b.Pvy), add(q.Fy, k * b.Pvx);
    add(q.Fz, 0.6 * b.VwY);
    add(q.Fy, 0.6 * b.VwX);
    if (b.s.shape == Shape::Tube)
        for (const double level : {0.6 * b.Pvy, b.Pvy}) {
            constexpr int PARTS = 200;
            const auto over = [&](double t) {
                return std::hypot(q.Fz[0] + t * (q.Fz[1] - q.Fz[0]), q.Fy[0] + t * (q.Fy[1] - q.Fy[0])) > level;
            };
            for (int k = 0; k < PARTS; ++k) {
                double low = double(k) / PARTS, high = double(k + 1) / PARTS;
                if (over(low) == over(high)) continue;
                const bool first = over(low);
                for (int n = 0; n < 60; ++n)
                    (over(0.5 * (low + high)) == first ? low : high) = 0.5 * (low + high);
                for (const double near : {-1e-7, 0.0, 1e-7})
                    places.push_back(std::clamp(L * (high + near), 0.0, L));
            }
        }
    // Where a moment becomes more than noise.
    const bool angle = b.s.shape == Shape::Angle;
    const double noise = 1.000001e-6 * b.steel.py;
    for (const double sign : {1.0, -1.0}) {
        for (const double s : b.diagram.Reaching(Bending::Major, sub, sign * noise * (angle ? b.p.Zu : b.p.Zx)))
            places.push_back(s);
        for (const double s : b.diagram.Reaching(Bending::Minor, sub, sign * noise * (angle ? b.p.Zv : b.p.Zy)))
            places.push_back(s);
    }
    return places;
}

/// The largest of one utilisation between two places, by thirds.
double Refined(const Basis& b, int sub, double low, double high, double Local::*u)
{
    double best = 0.0;
    for (int i = 0; i < 30; ++i) {
        const double s1 = low + (high - low) / 3.0, s2 = high - (high - low) / 3.0;
        const double u1 = WorstAt(b, sub, s1).*u, u2 = WorstAt(b, sub, s2).*u;
        best = std::max({best, u1, u2});
        (u1 < u2 ? low : high) = u1 < u2 ? s1 : s2;
    }
    return best;
}

/// What changes suddenly where the class changes.
double ClassKey(const Basis& b, int sub, double s, std::size_t reading)
{
    const Actions a = WithoutNoise(b, ActionsAt(b, sub, s)[reading]);
    const Class c = Classify(b.s, b.p, b.steel, a);
    const double axial = a.F < 0.0 ? c.pyAxial * c.Aeff * b.p.Zx / b.p.A : 0.0;
    return (c.pyrX * c.Wx + c.pyrY * c.Wy + axial) * (b.member.exact && c.cls > 2 ? 2.0 : 1.0);
}

/// Both sides of a sudden change of class between two places.
Local AtJump(const Basis& b, int sub, double low, double high, std::size_t reading)
{
    const double first = ClassKey(b, sub, low, reading), last = ClassKey(b, sub, high, reading);
    Local worst;
    if (std::fabs(first - last) <= 0.002 * std::max(first, last)) return worst;
    for (int i = 0; i < 30; ++i) {
        const double mid = 0.5 * (low + high), key = ClassKey(b, sub, mid, reading);
        (std::fabs(key - first) < std::fabs(key - last) ? low : high) = mid;
    }
    worst.Raise(WorstAt(b, sub, low));
    worst.Raise(WorstAt(b, sub, high));
    return worst;
}

} // namespace

Local CheckLocal(const Basis& b)
{
    Local worst;
    for (std::size_t i = 0; i < b.member.subs.size(); ++i) {
        const int sub = static_cast<int>(i);
        const double L = b.member.points[i + 1].x - b.member.points[i].x;
        std::vector<double> places = Places(b, sub);
        for (int k = 1; k < 32; ++k)
            places.push_back(L * k / 32.0);
        for (const double s : Kinks(b, sub))
            places.push_back(s);
        std::sort(places.begin(), places.end());
        std::vector<Local> found;
        for (const double s : places) {
            found.push_back(WorstAt(b, sub, s));
            worst.Raise(found.back());
        }
        const std::size_t readings = ActionsAt(b, sub, 0.0).size();
        for (std::size_t k = 0; k + 1 < places.size(); ++k)
            for (std::size_t reading = 0; reading < readings && places[k + 1] > places[k]; ++reading)
                worst.Raise(AtJump(b, sub, places[k], places[k + 1], reading));
        for (double Local::*u :
             {&Local::momentMajor, &Local::momentMinor, &Local::combinedTension, &Local::combinedCompression}) {
            std::size_t best = 0;
            for (std::size_t k = 1; k < found.size(); ++k)
                if (found[k].*u > found[best].*u) best = k;
            if (found[best].*u < 0.9 * (worst.*u)) continue;
            if (best > 0) worst.*u = std::max(worst.*u, Refined(b, sub, places[best - 1], places[best], u));
            if (best + 1 < found.size())
                worst.*u = std::max(worst.*u, Refined(b, sub, places[best], places[best + 1], u));
        }
    }
    return worst;
}

} // namespace Second
