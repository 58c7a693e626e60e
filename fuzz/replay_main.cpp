// Runs a fuzzer's body over kept inputs, and over random ones, without libFuzzer.
//
//     NAME_fuzz [--threads N] [--random COUNT] [FILE or FOLDER]...
//
// With --threads each input is run once, and then again by so many threads at the same time.
// Files are read by the C library alone, so that it runs where all code has to be instrumented.

#include <dirent.h>

#include <barrier>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

#ifdef __SANITIZE_THREAD__
// mktime and localtime_r take a lock that lies inside the C library, where it is not seen.
extern "C" const char *__tsan_default_suppressions() { return "race:tzset_internal\n"; }
#endif

namespace {

using Bytes = std::vector<std::uint8_t>;

// Threads that wait for an input and run it together.
class Together {
 public:
  explicit Together(unsigned count) : gate_(count + 1) {
    for (unsigned i = 0; i < count; ++i) threads_.emplace_back([this] { work(); });
  }
  Together(const Together &) = delete;
  Together &operator=(const Together &) = delete;
  ~Together() {
    input_ = nullptr;
    gate_.arrive_and_wait();
  }
  void run(const Bytes &input) {
    input_ = &input;
    gate_.arrive_and_wait();
    gate_.arrive_and_wait();
  }

 private:
  void work() {
    for (gate_.arrive_and_wait(); input_ != nullptr; gate_.arrive_and_wait()) {
      LLVMFuzzerTestOneInput(input_->data(), input_->size());
      gate_.arrive_and_wait();
    }
  }

  std::barrier<> gate_;
  const Bytes *input_ = nullptr;
  std::vector<std::jthread> threads_;
};

std::unique_ptr<Together> together;

void run(const Bytes &input) {
  LLVMFuzzerTestOneInput(input.data(), input.size());
  if (together) together->run(input);
}

unsigned long replay_file(const std::string &path) {
  std::FILE *file = std::fopen(path.c_str(), "rb");
  if (file == nullptr) {
    std::fprintf(stderr, "cannot open %s\n", path.c_str());
    std::exit(2);
  }
  Bytes bytes;
  for (int byte = std::getc(file); byte != EOF; byte = std::getc(file))
    bytes.push_back(static_cast<std::uint8_t>(byte));
  std::fclose(file);
  run(bytes);
  return 1;
}

unsigned long replay(const std::string &path) {
  DIR *folder = opendir(path.c_str());
  if (folder == nullptr) return replay_file(path);
  unsigned long count = 0;
  while (const dirent *entry = readdir(folder))
    if (entry->d_name[0] != '.') count += replay_file(path + "/" + entry->d_name);
  closedir(folder);
  return count;
}

// The same inputs in every run. Half of them are text-like, since most readers take text.
void run_random(unsigned long count) {
  std::mt19937 random(1);
  Bytes bytes;
  constexpr char kLikely[] = "0123456789AZaz .-+,%/\n\"{}[]=";
  for (unsigned long i = 0; i < count; ++i) {
    bytes.resize(random() % 160);
    for (auto &byte : bytes)
      byte = static_cast<std::uint8_t>(i % 2 == 0 ? random()
                                                  : kLikely[random() % (sizeof kLikely - 1)]);
    // The first bytes choose operation and options in most targets.
    for (std::size_t k = 0; k < bytes.size() && k < 4; ++k)
      bytes[k] = static_cast<std::uint8_t>(random());
    run(bytes);
  }
}

}  // namespace

int main(int argc, char **argv) {
  unsigned long files = 0, made = 0;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (argument == "--threads" && i + 1 < argc) {
      together = std::make_unique<Together>(std::strtoul(argv[++i], nullptr, 10));
    } else if (argument == "--random" && i + 1 < argc) {
      made = std::strtoul(argv[++i], nullptr, 10);
      run_random(made);
    } else {
      files += replay(argument);
    }
  }
  together.reset();
  std::printf("%lu kept inputs and %lu random ones replayed\n", files, made);
  return files + made == 0;
}
