// Writes the comparison of section properties with published figures.
//   keltrix-validation FOLDER OUTPUT.md

#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

#include "catalogue/Validation.h"

int main(int argc, char** argv)
{
    using namespace Keltrix::Steel::Test;
    if (argc != 3 || *argv[1] == '\0') {
        std::cerr << "usage: keltrix-validation FOLDER OUTPUT.md\n"
                     "  FOLDER is that of the published tables (the CMake variable KELTRIX_REFERENCE_DIR)\n";
        return 3;
    }
    try {
        const std::string report = ValidationReport(Validate(ReadPublishedTables(argv[1])));
        if (!(std::ofstream(argv[2], std::ios::binary) << report << std::flush))
            throw std::runtime_error(std::string("cannot write ") + argv[2]);
    } catch (const std::exception& error) {
        std::cerr << "keltrix-validation: " << error.what() << '\n';
        return 2;
    }
    return 0;
}
