// The worker thread of long jobs: started suspended below normal priority, progress sent
// to the window whose answer can stop the job, notices and the completion posted, and a
// window that goes away while the worker runs.
#include <atomic>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "image/image.h"
#include "support/ui_harness.h"
#include "ui/window.h"
#include "ui/worker_thread.h"

namespace {

using WorkerThreadTest = UiTest;

constexpr UINT kFormattingNotice = WM_USER + 3;
constexpr StatusCode kCancelled = 0x40050008;

// The window a worker reports to: logs every message from the worker in arrival order and
// answers progress reports with "go on" until `stopAtReport` reports have arrived.
class CJobWindow : public CCustomWindow {
 public:
  std::vector<std::string> log;
  int reports = 0;
  int stopAtReport = 0;  // 0: never stop
  bool done = false;
  StatusCode status = 0;

  HWND Create() { return CCustomWindow::Create(nullptr, RECT{0, 0, 100, 100}, L"job", WS_POPUP); }

 protected:
  bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override
  {
    switch (message) {
      case kWorkerProgressMessage:
        ++reports;
        log.push_back("progress " + std::to_string(wParam) + "/" + std::to_string(lParam));
        result = reports == stopAtReport ? 0 : 1;
        return true;
      case kFormattingNotice:
        log.push_back("notice " + std::to_string(wParam));
        result = 0;
        return true;
      case kWorkerDoneMessage:
        done = true;
        status = static_cast<StatusCode>(wParam);
        log.push_back("done");
        result = 0;
        return true;
      default: return CCustomWindow::HandleMessage(message, wParam, lParam, result);
    }
  }
};

// Runs `body` on a started worker reporting to `window` and waits for the completion.
void RunToCompletion(CJobWindow& window, WorkerBody body)
{
  CWorkerThread worker;
  ASSERT_EQ(worker.Create(window.Handle(), std::move(body)), kStatusSuccess);
  worker.Start();
  PumpUntil([&] { return window.done; });
}

}  // namespace

TEST_F(WorkerThreadTest, ProgressNoticesAndCompletionReachTheWindowInOrder)
{
  CJobWindow window;
  ASSERT_NE(window.Create(), nullptr);
  auto answers = std::make_shared<std::vector<bool>>();
  RunToCompletion(window, [answers](CWorkerReporter& reporter) {
    answers->push_back(reporter.Progress(1, 3));
    answers->push_back(reporter.Progress(2, 3));
    answers->push_back(reporter.Progress(3, 3));
    reporter.Notify(kFormattingNotice, 7, 0);
    return kSysDiskFull;
  });
  EXPECT_EQ(window.log, (std::vector<std::string>{"progress 1/3", "progress 2/3", "progress 3/3",
                                                  "notice 7", "done"}));
  EXPECT_EQ(window.status, kSysDiskFull);
  EXPECT_EQ(*answers, (std::vector<bool>{true, true, true}));
}

TEST_F(WorkerThreadTest, AnswerZeroStopsTheJob)
{
  CJobWindow window;
  ASSERT_NE(window.Create(), nullptr);
  window.stopAtReport = 3;
  // The body runs a job of the image container's shape through its progress callback.
  RunToCompletion(window, [](CWorkerReporter& reporter) {
    const ProgressCallback callback = &CWorkerReporter::ImageProgress;
    for (uint32_t unit = 1; unit <= 100; ++unit) {
      if (callback(unit, 100, &reporter, uint64_t{unit} << 20) == 0) return kCancelled;
    }
    return kStatusSuccess;
  });
  EXPECT_EQ(window.log, (std::vector<std::string>{"progress 1/100", "progress 2/100",
                                                  "progress 3/100", "done"}));
  EXPECT_EQ(window.status, kCancelled);
}

TEST_F(WorkerThreadTest, WorkerRunsOnItsOwnThreadBelowNormalPriority)
{
  CJobWindow window;
  ASSERT_NE(window.Create(), nullptr);
  auto priority = std::make_shared<std::atomic<int>>(THREAD_PRIORITY_ERROR_RETURN);
  auto threadId = std::make_shared<std::atomic<DWORD>>(0);
  RunToCompletion(window, [priority, threadId](CWorkerReporter&) {
    *priority = GetThreadPriority(GetCurrentThread());
    *threadId = GetCurrentThreadId();
    return kStatusSuccess;
  });
  EXPECT_EQ(priority->load(), THREAD_PRIORITY_BELOW_NORMAL);
  EXPECT_NE(threadId->load(), 0u);
  EXPECT_NE(threadId->load(), GetCurrentThreadId());
  EXPECT_EQ(window.status, kStatusSuccess);
}

TEST_F(WorkerThreadTest, NothingRunsBeforeStart)
{
  CJobWindow window;
  ASSERT_NE(window.Create(), nullptr);
  auto ran = std::make_shared<std::atomic<bool>>(false);
  CWorkerThread worker;
  ASSERT_EQ(worker.Create(window.Handle(),
                          [ran](CWorkerReporter& reporter) {
                            *ran = true;
                            reporter.Progress(1, 1);
                            return kStatusSuccess;
                          }),
            kStatusSuccess);
  const DWORD until = GetTickCount() + 300;
  while (GetTickCount() < until) {
    PumpMessages();
    Sleep(10);
  }
  EXPECT_FALSE(*ran);
  EXPECT_TRUE(window.log.empty());

  worker.Start();
  ASSERT_TRUE(PumpUntil([&] { return window.done; }));
  EXPECT_TRUE(*ran);
  EXPECT_EQ(window.log, (std::vector<std::string>{"progress 1/1", "done"}));
}

TEST_F(WorkerThreadTest, WorkerNeverStartedEndsWithoutRunningItsBody)
{
  CJobWindow window;
  ASSERT_NE(window.Create(), nullptr);
  auto ran = std::make_shared<std::atomic<bool>>(false);
  // The body's captures live as long as the thread's job: when the token expires, the
  // thread has ended.
  auto token = std::make_shared<int>(0);
  const std::weak_ptr<int> jobAlive = token;
  {
    CWorkerThread worker;
    ASSERT_EQ(worker.Create(window.Handle(),
                            [ran, token](CWorkerReporter&) {
                              *ran = true;
                              return kStatusSuccess;
                            }),
              kStatusSuccess);
    token.reset();
    EXPECT_FALSE(jobAlive.expired());
  }
  ASSERT_TRUE(PumpUntil([&] { return jobAlive.expired(); }));
  PumpMessages();
  EXPECT_FALSE(*ran);
  EXPECT_TRUE(window.log.empty());
}

TEST_F(WorkerThreadTest, WindowDestroyedWhileTheWorkerRunsStopsItsJob)
{
  CJobWindow window;
  ASSERT_NE(window.Create(), nullptr);
  auto lastAnswer = std::make_shared<std::atomic<int>>(-1);
  auto sent = std::make_shared<std::atomic<int>>(0);
  auto token = std::make_shared<int>(0);
  const std::weak_ptr<int> jobAlive = token;
  {
    CWorkerThread worker;
    ASSERT_EQ(worker.Create(window.Handle(),
                            [lastAnswer, sent, token](CWorkerReporter& reporter) {
                              for (uint32_t unit = 1; unit <= 100000; ++unit) {
                                ++*sent;
                                const bool goOn = reporter.Progress(unit, 100000);
                                *lastAnswer = goOn ? 1 : 0;
                                if (!goOn) return kCancelled;
                                Sleep(1);
                              }
                              return kStatusSuccess;
                            }),
              kStatusSuccess);
    token.reset();
    worker.Start();
  }  // the worker object goes first, as with a dialog that ends
  ASSERT_TRUE(PumpUntil([&] { return window.reports >= 2; }));
  const int seen = window.reports;
  ASSERT_TRUE(window.DestroyWindow());
  ASSERT_TRUE(PumpUntil([&] { return jobAlive.expired(); }));
  // The report after the window was gone was answered "stop", and nothing more came.
  EXPECT_EQ(lastAnswer->load(), 0);
  EXPECT_GT(sent->load(), seen);
  EXPECT_EQ(window.reports, seen);
  EXPECT_FALSE(window.done);
}

TEST_F(WorkerThreadTest, BodyThatThrowsCompletesAsAFailure)
{
  CJobWindow window;
  ASSERT_NE(window.Create(), nullptr);
  RunToCompletion(window,
                  [](CWorkerReporter&) -> StatusCode { throw std::runtime_error("broken job"); });
  EXPECT_EQ(window.status, kSysGeneralFailure);
}
