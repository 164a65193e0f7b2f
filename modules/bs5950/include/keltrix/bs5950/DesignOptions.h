#pragma once

#include "keltrix/bs5950/Export.h"

namespace Keltrix::BS5950 {

/// How the ends of a single angle, channel or T are connected; clauses 4.6.3.1 and 4.7.10.
enum class Connection {
    NotGiven,     ///< two or more fasteners or welds, without the reduction of length that they allow
    OneBolt,      ///< one bolt
    TwoBoltsMore, ///< two or more bolts in line along the member, or welds of that length
};

/// How lateral-torsional buckling about the major axis is checked.
enum class LateralMethod {
    Tables, ///< effective lengths of Tables 13 and 14, mLT of Table 18
    Elastic ///< elastic critical moment of the member as it is held and loaded, strength by Annex B
};

/// What an engineer says about a member beyond the input file. Each option that departs from its default is named among the
/// assumptions of the check.
struct DesignOptions {
    Connection connection = Connection::NotGiven;
    /// The given moments hold the eccentricity of the end connections, so that 4.6.3.1 and 4.7.10 do not apply.
    bool momentsHoldEccentricity = false;
    /// Column in simple construction with nominal moments: clause 4.7.7.
    bool simpleColumn = false;
    /// Stiff bearing length b1 at supports and concentrated loads, m; 0 where none is given. Clause 4.5.
    double stiffBearing = 0.0;
    /// Distance between intermediate transverse stiffeners of the web, m; 0 where there are none. Clause 4.4.5.
    double stiffenerSpacing = 0.0;
    LateralMethod lateral = LateralMethod::Tables;
};

} // namespace Keltrix::BS5950
