// Runs a fuzz target's entry point on each file named on the command line, or on
// every file of each named folder: the replay of the regression corpus without libFuzzer.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace {

void runFile(const std::filesystem::path &file)
{
    std::ifstream in(file, std::ios::binary);
    const std::vector<char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::printf("%s\n", file.c_str());
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size());
}

} // namespace

int main(int argc, char **argv)
{
    size_t count = 0;
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::path path(argv[i]);
        if (!std::filesystem::is_directory(path)) {
            runFile(path);
            ++count;
            continue;
        }
        std::vector<std::filesystem::path> files;
        for (const auto &entry : std::filesystem::directory_iterator(path)) {
            if (entry.is_regular_file())
                files.push_back(entry.path());
        }
        std::sort(files.begin(), files.end());
        for (const auto &file : files)
            runFile(file);
        count += files.size();
    }
    std::printf("%zu inputs replayed\n", count);
    return 0;
}
