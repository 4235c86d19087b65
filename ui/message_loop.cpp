#include "ui/message_loop.h"

#include <algorithm>

namespace {

thread_local CMessageLoop* currentLoop = nullptr;

// Iterates over a snapshot, skipping entries removed by an earlier call of the same pass.
template <typename Entry, typename Call>
bool ForEachStillRegistered(const std::vector<Entry*>& entries, bool newestFirst, Call call)
{
  const std::vector<Entry*> snapshot = entries;
  const auto visit = [&](Entry* entry) {
    return std::find(entries.begin(), entries.end(), entry) != entries.end() && call(entry);
  };
  if (newestFirst) return std::any_of(snapshot.rbegin(), snapshot.rend(), visit);
  return std::any_of(snapshot.begin(), snapshot.end(), visit);
}

template <typename Entry>
void Remove(std::vector<Entry*>& entries, Entry* entry)
{
  entries.erase(std::remove(entries.begin(), entries.end(), entry), entries.end());
}

}  // namespace

CMessageLoop::CMessageLoop() : previous_(currentLoop)
{
  currentLoop = this;
}

CMessageLoop::~CMessageLoop()
{
  currentLoop = previous_;
}

CMessageLoop* CMessageLoop::Current()
{
  return currentLoop;
}

void CMessageLoop::AddMessageFilter(CMessageFilter* filter)
{
  filters_.push_back(filter);
}

void CMessageLoop::RemoveMessageFilter(CMessageFilter* filter)
{
  Remove(filters_, filter);
}

void CMessageLoop::RemoveFromThreadLoops(CMessageFilter* filter)
{
  for (CMessageLoop* loop = currentLoop; loop != nullptr; loop = loop->previous_) {
    loop->RemoveMessageFilter(filter);
  }
}

void CMessageLoop::AddIdleHandler(CIdleHandler* handler)
{
  idleHandlers_.push_back(handler);
}

void CMessageLoop::RemoveIdleHandler(CIdleHandler* handler)
{
  Remove(idleHandlers_, handler);
}

bool CMessageLoop::RunFilters(MSG& message)
{
  return ForEachStillRegistered(
      filters_, true, [&](CMessageFilter* filter) { return filter->PreTranslateMessage(message); });
}

void CMessageLoop::RunIdleHandlers()
{
  ForEachStillRegistered(idleHandlers_, false, [](CIdleHandler* handler) {
    handler->OnIdle();
    return false;
  });
}

void CMessageLoop::ProcessMessage(MSG& message)
{
  if (RunFilters(message)) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

bool CMessageLoop::IsIdleMessage(const MSG& message)
{
  constexpr UINT kSystemTimer = 0x0118;  // the caret's blink timer
  return message.message != WM_MOUSEMOVE && message.message != WM_NCMOUSEMOVE &&
         message.message != WM_PAINT && message.message != kSystemTimer;
}

int CMessageLoop::Run()
{
  bool idlePending = true;
  MSG message{};
  for (;;) {
    if (idlePending && !PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE)) {
      RunIdleHandlers();
      idlePending = false;
    }
    const BOOL got = GetMessageW(&message, nullptr, 0, 0);
    if (got == -1) return -1;
    if (got == 0) return static_cast<int>(message.wParam);
    ProcessMessage(message);
    if (IsIdleMessage(message)) idlePending = true;
  }
}

bool CAcceleratorFilter::PreTranslateMessage(MSG& message)
{
  if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
  return TranslateAcceleratorW(target_, table_, &message) != 0;
}
