// Runs a fuzzer's body over kept inputs, and over random ones, without libFuzzer.
//
//     NAME_fuzz [--random COUNT] [FILE or FOLDER]...

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace {

namespace fs = std::filesystem;

void replay(const fs::path &path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    std::cerr << "cannot open " << path << '\n';
    std::exit(2);
  }
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
}

// The same inputs in every run. Half of them are text-like, since most readers take text.
void run_random(unsigned long count) {
  std::mt19937 random(1);
  std::vector<std::uint8_t> bytes;
  constexpr char kLikely[] = "0123456789AZaz .-+,%/\n\"{}[]=";
  for (unsigned long i = 0; i < count; ++i) {
    bytes.resize(random() % 160);
    for (auto &byte : bytes)
      byte = static_cast<std::uint8_t>(i % 2 == 0 ? random()
                                                  : kLikely[random() % (sizeof kLikely - 1)]);
    // The first bytes choose operation and options in most targets.
    for (std::size_t k = 0; k < bytes.size() && k < 4; ++k)
      bytes[k] = static_cast<std::uint8_t>(random());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
  }
}

}  // namespace

int main(int argc, char **argv) {
  unsigned long files = 0, made = 0;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (argument == "--random" && i + 1 < argc) {
      made = std::strtoul(argv[++i], nullptr, 10);
      run_random(made);
    } else if (fs::is_directory(argument)) {
      for (const auto &entry : fs::directory_iterator(argument)) replay(entry.path()), ++files;
    } else if (fs::exists(argument)) {
      replay(argument), ++files;
    }
  }
  std::cout << files << " kept inputs and " << made << " random ones replayed\n";
  return files + made == 0;
}
