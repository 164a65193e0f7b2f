#pragma once

#include "keltrix/steel/Export.h"
#include "keltrix/steel/MemberResult.h"
#include "keltrix/steel/Restraint.h"

namespace Keltrix::Steel {

using Data::CRestraint;

/// Rules that several design codes share: effective lengths for lateral-torsional buckling of BS 5950-1:2000, Table
/// 13 (beams, clause 4.3.5.2) and Table 14 (cantilevers, clause 4.3.5.4).
///
/// Every rule returns the effective length in m, plus infinity where no row of its table applies. It writes the row
/// it used and a failure into the result, where there is one; without a result it only computes.
class KELTRIX_STEEL_API CCodeShare {
public:
    /// The flange in compression over a segment. Any other value is taken like LT_COMP_BOTH.
    enum LT_BuckleDirection : int {
        LT_COMP_FLANGE1 = 0, ///< flange 1 (top), whatever moment the restraint holds
        LT_COMP_FLANGE2 = 1, ///< flange 2 (bottom), whatever moment the restraint holds
        LT_COMP_BOTH = 2,    ///< the moment reverses: the restraint's own moment says which, as stored
        LT_COMP_NONE = 3     ///< no moment beyond the tolerance: the restraint's own moment says which, as stored
    };

    /// The result is borrowed and may be null.
    explicit CCodeShare(CMemberResult* result) : m_pResult(result) {}

    /// Table 13 with the same condition at both ends. L length of the segment and D depth of the section, m.
    /// `bDestabilizing` takes the destabilising column; `bNominalRejected` refuses the row of an end whose
    /// compression flange is held laterally without any torsional restraint but the nominal one.
    double BS5950_1_2000_Table13(double L, double D, LT_BuckleDirection dir, const CRestraint& restraint,
                                 bool bDestabilizing, bool bNominalRejected) const;
    /// Table 13 with the conditions of the two ends: the mean of the two lengths where both are finite, else infinity.
    /// The result is merged with the findings of the two ends, so it has the side effects of CMemberResult::operator+.
    double BS5950_1_2000_Table13(double L, double D, LT_BuckleDirection dir, const CRestraint& end1,
                                 const CRestraint& end2, bool bDestabilizing, bool bNominalRejected1,
                                 bool bNominalRejected2) const;
    /// Table 14, with the increase for a moment at the tip. The tip's use of the moment sign rules both ends.
    double BS5950_1_2000_Table14(double L, LT_BuckleDirection dir, const CRestraint& support, const CRestraint& tip,
                                 bool bDestabilizing) const;

private:
    CMemberResult* m_pResult;
};

} // namespace Keltrix::Steel
