// The cipher benchmark on Google Benchmark: every workload's two sides run as separate
// benchmarks in one process, then the ratios are printed from the same run's figures.
#include <benchmark/benchmark.h>

#include <map>

#include "cipher_workloads.h"

namespace {

// Keeps each run's seconds per iteration, by benchmark name, beside the usual console output.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  RatioReporter() : ConsoleReporter(OO_Tabular) {}

  void ReportRuns(const std::vector<Run>& runs) override
  {
    for (const Run& run : runs) {
      secondsPerRun_[run.run_name.function_name] =
          run.real_accumulated_time / static_cast<double>(run.iterations);
    }
    ConsoleReporter::ReportRuns(runs);
  }
  double SecondsPerRun(const std::string& name) const { return secondsPerRun_.at(name); }

 private:
  std::map<std::string, double> secondsPerRun_;
};

std::string BenchmarkName(const Workload& w, bool ours)
{
  return w.name + " | " + (ours ? "Cryptelle" : w.referenceName);
}

void Register(const Workload& w, bool ours)
{
  const std::function<void()>& body = ours ? w.ours : w.reference;
  benchmark::RegisterBenchmark(BenchmarkName(w, ours).c_str(), [&w,
                                                                &body](benchmark::State& state) {
    for (auto _ : state) body();
    if (w.bytesPerRun != 0) {
      state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(w.bytesPerRun));
    }
  })->MinTime(0.2);
}

}  // namespace

int main(int argc, char** argv)
{
  const std::vector<Workload> workloads = MakeCipherWorkloads();
  for (const Workload& w : workloads) {
    Register(w, true);
    Register(w, false);
  }
  benchmark::Initialize(&argc, argv);
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);

  std::vector<Measurement> measurements;
  for (const Workload& w : workloads) {
    measurements.push_back({&w, reporter.SecondsPerRun(BenchmarkName(w, true)),
                            reporter.SecondsPerRun(BenchmarkName(w, false))});
  }
  PrintRatioTable(measurements);
  benchmark::Shutdown();
  return 0;
}
