#pragma once

namespace Keltrix::EC3 {

/// What a member, or a cross-section, carries as far as its class depends on it. N in N.
struct ClassActions {
    double NEd = 0.0;           ///< compression above zero, tension below
    bool compressesTop = false; ///< My compresses flange 1 (top) somewhere
    bool compressesBottom = false;
    bool compressesBack = false; ///< Mz compresses the back of a channel (of other shapes, one side) somewhere
    bool compressesTips = false; ///< Mz compresses the tips, or the other side, somewhere

    bool BendsMajor() const { return compressesTop || compressesBottom; }
    bool BendsMinor() const { return compressesBack || compressesTips; }

    static ClassActions Compression(double NEd) { return {NEd, false, false, false, false}; }
    static ClassActions Major(double NEd = 0.0) { return {NEd, true, true, false, false}; }
    static ClassActions Minor(double NEd = 0.0) { return {NEd, false, false, true, true}; }
};

} // namespace Keltrix::EC3
