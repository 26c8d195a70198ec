// How fast files of a synthetic LP are read, beside other readers on the same files in the same run, and how much
// memory that takes at most beside the arrays of the model. Times are processor time, the least of several readings;
// every reader runs in processes of its own.
//
//   read_bench [n ...]     n columns, n rows, 3n nonzeros; default 10000 100000

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <filesystem>
#include <fstream>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bench/read/child.h"
#include "bench/read/readers.h"
#include "bench/read/synthetic_files.h"
#include "kavo/reader/reader.h"

namespace {

constexpr int kRounds = 3;

double processorSeconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

// A line of what the system says of this process, such as "VmHWM:". Unlike getrusage, which goes on from the peak of
// the process that started this one, its peak is that of this program alone.
double statusBytes(std::string_view field) {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    double kilobytes = 0;
    if (word == field && status >> kilobytes) return 1024 * kilobytes;
  }
  throw std::runtime_error("the system does not tell how much memory is in use");
}

// ---- in a process of its own ----

using Reader = void (*)(const std::string&, std::size_t);

void timeReader(std::string_view name, const std::string& path, std::size_t n, int times) {
  const Reader reader = name == "kavo"   ? bench::readWithKavo
                        : name == "ampl" ? bench::readWithAmplLibrary
                                         : bench::readWithCoinUtils;
  double least = std::numeric_limits<double>::max();
  for (int i = 0; i < times; ++i) {
    const double begin = processorSeconds();
    reader(path, n);
    least = std::min(least, processorSeconds() - begin);
  }
  fmt::print("{}\n", least);
}

// What reading adds to the process at most, over what the model's arrays take.
void measureMemory(const std::string& path) {
  const double before = statusBytes("VmRSS:");
  const kavo::Model model = kavo::reader::read(path);
  fmt::print("{}\n", (statusBytes("VmHWM:") - before) / static_cast<double>(bench::arrayBytes(model)));
}

// ---- the table ----

class Table {
  static constexpr const char* kLine = "{:>9} {:>12} {:>8} {:>8} {:>15} {:>15} {:>15} {:>15}\n";

 public:
  Table(std::string self, std::string folder) : self_(std::move(self)), folder_(std::move(folder)) {
    fmt::print("MB/s of each reader, and in brackets how many times faster kavo is\n");
    fmt::print(kLine, "columns", "file", "MB", "kavo", "AMPL library", "CoinUtils", "Gurobi", "peak / arrays");
  }

  void add(std::size_t n) const {
    const std::string stem = fmt::format("{}/lp{}", folder_, n);
    bench::numberFrom({self_, "--write", std::to_string(n), stem});
    for (const auto& [format, ending] :
         {std::pair{"text .nl", "-text.nl"}, {"binary .nl", "-binary.nl"}, {".mps", ".mps"}, {".lp", ".lp"}}) {
      addFile(n, format, stem + ending);
      std::filesystem::remove(stem + ending);
    }
  }

 private:
  using Command = std::vector<std::string>;

  void addFile(std::size_t n, std::string_view format, const std::string& path) const {
    const bool nl = path.ends_with(".nl");
    const int times = n > 300000 ? 2 : 7;
    const double megabytes = 1e-6 * static_cast<double>(std::filesystem::file_size(path));
    const auto own = [&](const char* name) -> Command {
      return {self_, "--time", name, path, std::to_string(n), std::to_string(times)};
    };
    const Command none, gurobi = {GRBLINK_PYTHON, GRBLINK_GUROBI_READ, path, std::to_string(times)};
    const Command commands[] = {own("kavo"), nl ? own("ampl") : none, nl ? none : own("coin"), nl ? none : gurobi};
    std::vector<double> seconds(std::size(commands), std::numeric_limits<double>::max());
    for (int round = 0; round < kRounds; ++round) {
      for (std::size_t i = 0; i < seconds.size(); ++i) {
        if (!commands[i].empty()) seconds[i] = std::min(seconds[i], bench::numberFrom(commands[i]));
      }
    }
    const auto other = [&](std::size_t i) {
      return commands[i].empty() ? std::string()
                                 : fmt::format("{:.0f} ({:.2f})", megabytes / seconds[i], seconds[i] / seconds[0]);
    };
    const double memory = bench::numberFrom({self_, "--memory", path});
    fmt::print(kLine, n, format, fmt::format("{:.1f}", megabytes), fmt::format("{:.0f}", megabytes / seconds[0]),
               other(1), other(2), other(3), fmt::format("{:.2f}", memory));
    std::fflush(stdout);
  }

  std::string self_, folder_;
};

void makeTable(const std::vector<std::size_t>& sizes) {
  const std::filesystem::path folder =
      std::filesystem::temp_directory_path() / fmt::format("grblink-read-bench-{}", ::getpid());
  std::filesystem::create_directories(folder);
  try {
    const Table table(std::filesystem::read_symlink("/proc/self/exe").string(), folder.string());
    for (const std::size_t n : sizes) table.add(n);
  } catch (...) {
    std::filesystem::remove_all(folder);
    throw;
  }
  std::filesystem::remove_all(folder);
}

void run(const std::vector<std::string>& words) {
  if (words.size() == 3 && words[0] == "--write") {
    bench::writeSyntheticFiles(std::stoul(words[1]), words[2]);
    fmt::print("0\n");
  } else if (words.size() == 5 && words[0] == "--time") {
    timeReader(words[1], words[2], std::stoul(words[3]), std::stoi(words[4]));
  } else if (words.size() == 2 && words[0] == "--memory") {
    measureMemory(words[1]);
  } else {
    std::vector<std::size_t> sizes;
    for (const std::string& word : words) sizes.push_back(std::stoul(word));
    makeTable(sizes.empty() ? std::vector<std::size_t>{10000, 100000} : sizes);
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    run({argv + 1, argv + argc});
    return 0;
  } catch (const std::exception& error) {
    fmt::print(stderr, "read_bench: {}\n", error.what());
    return 1;
  }
}
