// The cipher benchmark as a plain timer loop, for Windows (Google Benchmark is not built
// for MinGW): each side of a workload runs until half a second has passed.
#include <chrono>

#include "cipher_workloads.h"

namespace {

double SecondsPerRun(const std::function<void()>& body)
{
  using Clock = std::chrono::steady_clock;
  body();  // warm-up: key schedules, caches, first-use set-up
  const auto start = Clock::now();
  long runs = 0;
  std::chrono::duration<double> elapsed{};
  do {
    body();
    ++runs;
    elapsed = Clock::now() - start;
  } while (elapsed.count() < 0.5);
  return elapsed.count() / static_cast<double>(runs);
}

}  // namespace

int main()
{
  const std::vector<Workload> workloads = MakeCipherWorkloads();
  std::vector<Measurement> measurements;
  for (const Workload& w : workloads) {
    measurements.push_back({&w, SecondsPerRun(w.ours), SecondsPerRun(w.reference)});
  }
  PrintRatioTable(measurements);
  return 0;
}
