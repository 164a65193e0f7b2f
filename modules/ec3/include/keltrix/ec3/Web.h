#pragma once

#include <optional>

#include "keltrix/ec3/CrossSection.h"
#include "keltrix/ec3/Export.h"
#include "keltrix/ec3/Section.h"

namespace Keltrix::EC3 {

/// Panel of a web between transverse stiffeners, EN 1993-1-5 5. Lengths in m.
struct WebPanel {
    double a = 0.0; ///< distance of the stiffeners; 0 where only the supports are stiffened
    bool rigidEndPost = false;
};

/// EN 1993-1-5 5.1(2): whether hw/tw is above 72 ε/η (31 ε kτ^0.5/η with stiffeners), so that shear buckling is to be checked. False
/// for shapes without a web between two flanges.
KELTRIX_EC3_API bool NeedsShearBuckling(const Section& section, const Strength& strength, const WebPanel& panel = {});
/// The same of the plates that carry a shear across the web, the walls b of a rectangular hollow section: (b - 2 tw)/tf above 72 ε/η.
/// False for other shapes.
KELTRIX_EC3_API bool NeedsShearBucklingAcross(const Section& section, const Strength& strength);
/// A rectangular hollow section turned by a right angle: h and b, tw and tf and what goes with both axes change places, so that its
/// webs are the walls that carry a shear across. Any other section as it is. Basis and plates stay.
KELTRIX_EC3_API Section TurnedSection(const Section& section);
/// EN 1993-1-5 5.3: λ̄w and χw.
KELTRIX_EC3_API double WebSlenderness(const Section& section, const Strength& strength, const WebPanel& panel = {});
KELTRIX_EC3_API double WebShearFactor(double slenderness, double eta, bool rigidEndPost);
/// EN 1993-1-5 (5.2): contribution of the web.
KELTRIX_EC3_API Resistance VbwRd(const Section& section, const Strength& strength, const WebPanel& panel = {});
/// EN 1993-1-5 5.4: Mf,Rd of the flanges alone, the smaller of both, less the share of an axial force.
KELTRIX_EC3_API Resistance MfRd(const Section& section, const Strength& strength, double NEd = 0.0);
/// EN 1993-1-5 (5.1), (5.8): web and flanges at a moment; at most η fy hw tw/(3^0.5 γM1). Nothing without a distance of stiffeners.
KELTRIX_EC3_API Resistance VbRd(const Section& section, const Strength& strength, const WebPanel& panel, double MEd,
                                double NEd = 0.0);
/// EN 1993-1-5 7.1(1): left side of (7.1), η̄1 + (1 - Mf/Mpl)(2 η̄3 - 1)², where VEd is above half of Vbw,Rd and MEd not below Mf,Rd;
/// otherwise 0, because there is nothing to check. Mf and Mpl are those with NEd, compression above zero (7.1(4)); Mf is 0 where the compression is
/// above the plastic resistance of the web alone, which is compressed throughout then (7.1(5)).
struct ShearBending {
    double eta3 = 0.0; ///< VEd/Vbw,Rd
    double MfRd = 0.0;
    double MplRd = 0.0;
    double utilisation = 0.0;
};
/// Nothing where the shape has no such web.
KELTRIX_EC3_API std::optional<ShearBending> BendWithShearBuckling(const Section& section, const Strength& strength,
                                                                  const WebPanel& panel, double MEd, double VEd,
                                                                  double NEd = 0.0);
/// Its utilisation alone.
KELTRIX_EC3_API std::optional<double> ShearBucklingInteraction(const Section& section, const Strength& strength,
                                                               const WebPanel& panel, double MEd, double VEd,
                                                               double NEd = 0.0);

/// A concentrated force on one flange, resisted by the web without a stiffener there.
struct WebForce {
    double ss = 0.0;    ///< stiff bearing length, m
    bool atEnd = false; ///< type c: force near an unstiffened end; otherwise type a: through the flange between ends
    double c = 0.0;     ///< from the end of the member to the bearing, type c
    bool onFlange1 = true;
    /// 6.3(1): ss counts up to hw. False compares with tables that were made without that limit.
    bool limitToDepth = true;
};
/// The resistance of EN 1993-1-5 6 with what led to it. N, m.
struct WebForceResistance {
    double ss = 0.0; ///< that counts
    double m1 = 0.0; ///< (6.8)
    double m2 = 0.0; ///< (6.9), 0 where λ̄F with it is not above 0.5
    double kF = 0.0;
    double Fcr = 0.0; ///< (6.5)
    double ly = 0.0;
    double slenderness = 0.0; ///< λ̄F
    double chi = 0.0;
    double FRd = 0.0;
};
/// FRd = χF ly tw fyw/γM1 of an unstiffened web. Nothing for shapes other than I and unequal I.
KELTRIX_EC3_API std::optional<WebForceResistance> ResistWebForce(const Section& section, const Strength& strength,
                                                                 const WebForce& force);
KELTRIX_EC3_API Resistance FRd(const Section& section, const Strength& strength, const WebForce& force);
/// (6.10) with m2: a bound of ly wherever the force acts. ss alone for shapes without a web between two flanges.
KELTRIX_EC3_API double LongestLoadedLength(const Section& section, const WebForce& force);

} // namespace Keltrix::EC3
