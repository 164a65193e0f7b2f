// Feeds the files of the named folders to a fuzz target: the corpus as a test, without a fuzzer.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "Fuzz.h"

int main(int argc, char** argv)
{
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
            std::ifstream file(entry.path(), std::ios::binary);
            const std::vector<char> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
            if (!file) {
                std::fprintf(stderr, "cannot read %s\n", entry.path().string().c_str());
                return 1;
            }
            // Printed first, so that the last line names the input that ended the program.
            std::printf("%s\n", entry.path().string().c_str());
            std::fflush(stdout);
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
            ++count;
        }
    }
    if (count == 0) std::fprintf(stderr, "no input\n");
    return count == 0;
}
