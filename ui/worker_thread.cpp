#include "ui/worker_thread.h"

#include <process.h>

#include <memory>
#include <new>

#include "system/error_map.h"

// What the thread owns: its window and its body.
struct WorkerJob {
  HWND target;
  WorkerBody body;
  bool abandoned = false;  // set before the thread is resumed when it is never started
};

namespace {

// Runs the body; nothing may unwind out of the thread, so an exception ends the job as a
// failure like any other.
StatusCode RunBody(const WorkerBody& body, CWorkerReporter& reporter)
{
  try {
    return body(reporter);
  } catch (const std::bad_alloc&) {
    return kSysOutOfMemory;
  } catch (...) {
    return kSysGeneralFailure;
  }
}

unsigned __stdcall WorkerMain(void* argument)
{
  const std::unique_ptr<WorkerJob> job(static_cast<WorkerJob*>(argument));
  if (job->abandoned) return 0;
  CWorkerReporter reporter(job->target);
  const StatusCode status = RunBody(job->body, reporter);
  PostMessageW(job->target, kWorkerDoneMessage, status, 0);
  return 0;
}

}  // namespace

bool CWorkerReporter::Progress(uint32_t done, uint32_t total) const
{
  return SendMessageW(target_, kWorkerProgressMessage, done, total) != 0;
}

void CWorkerReporter::Notify(UINT message, WPARAM wParam, LPARAM lParam) const
{
  PostMessageW(target_, message, wParam, lParam);
}

uint32_t CWorkerReporter::ImageProgress(uint32_t position, uint32_t range, void* reporter, uint64_t)
{
  return static_cast<const CWorkerReporter*>(reporter)->Progress(position, range) ? 1 : 0;
}

CWorkerThread::~CWorkerThread()
{
  if (!thread_) return;
  // Never started: the thread wakes only to end.
  job_->abandoned = true;
  ResumeThread(thread_.Get());
}

StatusCode CWorkerThread::Create(HWND target, WorkerBody body)
{
  auto job = std::make_unique<WorkerJob>(WorkerJob{target, std::move(body), false});
  const uintptr_t thread =
      _beginthreadex(nullptr, 0, WorkerMain, job.get(), CREATE_SUSPENDED, nullptr);
  if (thread == 0) return MapSystemError(GetLastError());
  thread_.Reset(reinterpret_cast<HANDLE>(thread));
  SetThreadPriority(thread_.Get(), THREAD_PRIORITY_BELOW_NORMAL);
  job_ = job.release();
  return kStatusSuccess;
}

void CWorkerThread::Start()
{
  if (!thread_) return;
  job_ = nullptr;
  ResumeThread(thread_.Get());
  thread_.Reset();
}
