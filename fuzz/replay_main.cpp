// Runs a fuzz target over files and folders of inputs, so the corpus is replayed by every
// build (g++ too) without libFuzzer.
#include "fuzz/fuzz_common.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

int main(int argc, char** argv) {
    namespace fs = std::filesystem;
    std::size_t runs = 0;
    auto run = [&](const fs::path& file) {
        std::ifstream in(file, std::ios::binary);
        std::vector<std::uint8_t> data(std::istreambuf_iterator<char>(in), {});
        LLVMFuzzerTestOneInput(data.data(), data.size());
        ++runs;
    };
    for (int i = 1; i < argc; ++i) {
        fs::path p(argv[i]);
        if (fs::is_directory(p)) {
            for (const auto& e : fs::recursive_directory_iterator(p)) {
                if (e.is_regular_file()) run(e.path());
            }
        } else if (fs::exists(p)) {
            run(p);
        } else {
            std::fprintf(stderr, "no such input: %s\n", argv[i]);
            return 2;
        }
    }
    std::printf("replayed %zu inputs\n", runs);
    return runs > 0 ? 0 : 1;
}
