// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

// Stands in for the fuzzing engine where the compiler has none: hands over each file once.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize);

namespace {

void Replay(const std::filesystem::path& path)
{
    std::printf("%s\n", path.c_str()); // the last one is that of a crash
    std::fflush(stdout);
    std::ifstream file(path, std::ios::binary);
    file.exceptions(std::ios::badbit);
    std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    bytes.shrink_to_fit(); // a memory checker sees a read beyond the last byte
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

} // namespace

/// The arguments are folders. Fails when one of them holds nothing.
int main(int argc, char** argv)
{
    try {
        for (int i = 1; i < argc; ++i) {
            int iCount = 0;
            for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[i])) {
                if (entry.is_regular_file()) {
                    Replay(entry.path());
                    ++iCount;
                }
            }
            std::printf("%d inputs of %s\n", iCount, argv[i]);
            if (iCount == 0) {
                return 1;
            }
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return argc > 1 ? 0 : 1;
}
