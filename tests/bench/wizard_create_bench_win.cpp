// How close the new image wizard's creation comes to the disk's limit, under Wine, measured
// in the same run on the same file system (disk_limit.h: unbuffered 1 MiB writes and one
// flush). The creation is the progress page's worker on its own thread, from its start to
// its WMU_CREATE_DONE, for a fixed AES-256 image; every drive letter is taken, so there is
// no temporary mount and no formatting in the time.
//
// Wine writes "unbuffered" files through the system's cache, so both sides first copy into
// memory the system hands out, and on a virtual machine that memory is sometimes slow to
// come (about 0.35 against 2.5 GB/s here, in no fixed order, when the machine has handed
// freed memory back to its host; scripts/bench.sh delays that where it can): one run's
// ratio compares whichever side was unlucky. The median of each side and the fastest run of
// each side, both over the same runs, compare typical runs and best runs; a single lucky or
// unlucky run moves neither ratio much.
//
//   wizard_create_bench DIRECTORY [MEBIBYTES] [RUNS]     (defaults 1024 and 7)
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "disk_limit.h"
#include "system/file.h"
#include "system/utf.h"
#include "wizard/creation_thread_win.h"

namespace {

double Median(std::vector<double> values)
{
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

// The worker's view of this computer: every letter from A to Z in use.
DriveLetterFacts EveryLetterInUse()
{
  DriveLetterFacts facts;
  facts.lettersInUse = (1u << 26) - 1;
  return facts;
}

// Stands in for the progress page: lets every report go on and keeps the final status.
struct CreationWatch {
  bool done = false;
  StatusCode status = 0;
};

LRESULT CALLBACK WatchProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
  auto* watch = reinterpret_cast<CreationWatch*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (message == WMU_CREATE_PROGRESS) return 1;
  if (message == WMU_CREATE_DONE && watch != nullptr) {
    watch->done = true;
    watch->status = static_cast<StatusCode>(wParam);
    return 0;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

// The seconds from the worker's start to its completion message; negative on a failure.
double CreationSeconds(HWND window, CreationWatch& watch, const CreationJob& job)
{
  watch = CreationWatch{};
  const auto start = std::chrono::steady_clock::now();
  if (IsFailure(StartCreationWorker(window, job, EveryLetterInUse))) return -1;
  MSG message{};
  while (!watch.done && GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
  if (IsFailure(watch.status)) {
    std::fprintf(stderr, "the creation failed with %X\n", watch.status);
    return -1;
  }
  return elapsed.count();
}

}  // namespace

int main(int argc, char** argv)
{
  if (argc < 2) {
    std::fprintf(stderr, "usage: wizard_create_bench DIRECTORY [MEBIBYTES] [RUNS]\n");
    return 2;
  }
  const std::string directory = argv[1];
  const uint64_t bytes = (argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1024) << 20;
  const int runs = argc > 3 ? std::max(1, std::atoi(argv[3])) : 7;

  WNDCLASSW windowClass{};
  windowClass.lpfnWndProc = WatchProc;
  windowClass.hInstance = GetModuleHandleW(nullptr);
  windowClass.lpszClassName = L"CryptelleWizardBench";
  RegisterClassW(&windowClass);
  CreationWatch watch;
  const HWND window = CreateWindowW(windowClass.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE,
                                    nullptr, windowClass.hInstance, nullptr);
  SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&watch));

  CreationJob job;
  job.path = Utf8ToUtf16(directory) + u"/wizard-bench.qvi";
  job.password = u"benchmark password";
  job.capacity = bytes;
  job.fixedSize = true;
  job.algorithm = 0;
  job.keyBits = 256;

  std::printf("the wizard's creation of a fixed AES-256 image of %llu MiB in %s, %d runs\n",
              static_cast<unsigned long long>(bytes >> 20), directory.c_str(), runs);
  std::printf("limit: %s\n", DiskLimitMethod());
  std::printf("%-4s %14s %16s %6s\n", "run", "limit", "wizard", "ratio");
  const double megabytes = static_cast<double>(bytes) / 1e6;
  std::vector<double> ratios;
  std::vector<double> limits;
  std::vector<double> creations;
  double fastestLimit = 0;
  double fastestCreation = 0;
  for (int run = 1; run <= runs; ++run) {
    SysDeleteFile(job.path.c_str());
    SettleFreedBlocks(directory);
    const double limit = MeasureDiskLimit(directory, bytes).writeSeconds;
    const double creation = CreationSeconds(window, watch, job);
    if (limit < 0 || creation < 0) return 1;
    ratios.push_back(limit / creation);
    limits.push_back(limit);
    creations.push_back(creation);
    fastestLimit = run == 1 ? limit : std::min(fastestLimit, limit);
    fastestCreation = run == 1 ? creation : std::min(fastestCreation, creation);
    std::printf("%-4d %9.0f MB/s %11.0f MB/s %6.2f\n", run, megabytes / limit, megabytes / creation,
                ratios.back());
  }
  SysDeleteFile(job.path.c_str());
  std::printf("wizard / limit:        min %.2f  median %.2f  max %.2f\n",
              *std::min_element(ratios.begin(), ratios.end()), Median(ratios),
              *std::max_element(ratios.begin(), ratios.end()));
  std::printf("median of each side:  limit %.0f MB/s, wizard %.0f MB/s, ratio %.2f\n",
              megabytes / Median(limits), megabytes / Median(creations),
              Median(limits) / Median(creations));
  std::printf("fastest of %d runs:    limit %.0f MB/s, wizard %.0f MB/s, ratio %.2f\n", runs,
              megabytes / fastestLimit, megabytes / fastestCreation,
              fastestLimit / fastestCreation);
  DestroyWindow(window);
  return 0;
}
