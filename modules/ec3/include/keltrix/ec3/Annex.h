#pragma once

#include <vector>

#include "keltrix/ec3/Export.h"

namespace Keltrix::EC3 {

/// Whose strengths 3.2.1(1) takes: those of the product standards (EN 10025, EN 10210, EN 10219) or those of Table 3.1.
enum class StrengthSource { ProductStandards, Table31 };

/// What 6.3.2.3 takes for one kind of fabrication.
struct LateralChoice {
    double lambda0 = 0.2; ///< plateau length of the curves
    double beta = 1.0;
    /// Bounds of the depth to width ratio up to which the first and the second curve hold; beyond the second 6.3.2.3 is not used.
    double firstRatio = 2.0;
    double secondRatio = 0.0;
    wchar_t firstCurve = L'd';
    wchar_t secondCurve = L'd';
    /// Curve beyond the second ratio; 0 where the choice has none.
    wchar_t lastCurve = 0;
};

/// The values of a national annex. Each is a choice that EN 1993-1-1 leaves to the countries.
struct Annex {
    const wchar_t* id = L"";
    const wchar_t* title = L"";
    double gammaM0 = 1.0; ///< 6.1(1)
    double gammaM1 = 1.0;
    double gammaM2 = 1.25;
    double eta = 1.0; ///< 6.2.6(3), EN 1993-1-5 5.1(2)
    StrengthSource strengths = StrengthSource::Table31;
    LateralChoice rolled;            ///< 6.3.2.3(1), rolled I and H sections
    LateralChoice welded;            ///< equivalent welded sections
    double flangePlateau = 0.5;      ///< λc0 of 6.3.2.4(1)
    double flangeFactor = 1.10;      ///< kfl of 6.3.2.4(2)
    bool lateralOfHotHollow = false; ///< 6.3.2.3 holds for hot finished hollow sections, by the row of rolled sections
    bool lateralOfChannels = false;  ///< 6.3.2.3 holds for rolled channels, by curve d
};

/// BS EN 1993-1-1:2005+A1:2014 with the UK National Annex; the values that the standard recommends.
KELTRIX_EC3_API const Annex& UkAnnex();
KELTRIX_EC3_API const Annex& RecommendedAnnex();

/// One value of an annex in words, for texts and documents.
struct NationalChoice {
    const wchar_t* clause = L"";
    const wchar_t* name = L"";
    double value = 0.0;
};
/// Every number of an annex with its clause.
KELTRIX_EC3_API std::vector<NationalChoice> NationalChoices(const Annex& annex);

} // namespace Keltrix::EC3
