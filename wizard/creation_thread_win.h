// The creation worker on its own thread, reporting to the wizard's progress page.
//
// The page's messages: WMU_CREATE_PROGRESS is sent for every progress report (wParam done,
// lParam total; the answer 0 stops the creation), WMU_CREATE_FORMATTING is posted when the
// temporary mount succeeded and the file system is being written (wParam the mount's
// status), WMU_CREATE_DONE is posted at the end (wParam the final status).
#pragma once

#include <windows.h>

#include "dialogs/drive_facts_win.h"
#include "system/status.h"
#include "ui/worker_thread.h"
#include "wizard/creation_worker.h"

inline constexpr UINT WMU_CREATE_DONE = kWorkerDoneMessage;
inline constexpr UINT WMU_CREATE_PROGRESS = kWorkerProgressMessage;
inline constexpr UINT WMU_CREATE_FORMATTING = WM_USER + 3;

// Starts the worker for its own copy of `job` at below-normal priority, reporting to
// `page`; the free drive letters of its temporary mount come from `driveFacts`. Nobody
// waits for the thread. A failure means the thread could not be made and nothing runs.
StatusCode StartCreationWorker(HWND page, const CreationJob& job, DriveFactsSource driveFacts);
