#include "check/ReportKey.h"

namespace Keltrix::Host {

std::string ReportKey()
{
    return "<h4>How to read this report:</h4>\n"
           "\tPoints are numbered from 1 along the member. Sub-span 1 lies between points 1 and 2, sub-span 2 between "
           "points 2 and 3. Positions are numbered from 1 along the member.\n"
           "\tIn the table SubSpans, which counts points from 0, \"0-1L\" is the left end of sub-span 1, \"0-1R\" its "
           "right "
           "end, \"1-2L\" the left end of sub-span 2.\n"
           "\tThe ZMD axes of forces and moments are the member's own: Fx along it, tension above zero; Fy parallel to "
           "the "
           "flanges; Fz parallel to the web; Mxx torsion; Myy about the major axis, above zero where it compresses "
           "flange 2 "
           "(bottom); Mzz about the minor axis.\n"
           "\tEffective lengths are labelled by the section's axes: xx is the major one.\n"
           "\tDimensions of a section that have no unit beside them are in m.\n";
}

} // namespace Keltrix::Host
