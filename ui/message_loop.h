// The thread's message loop, with message filters (they see each message before it is
// translated and dispatched: accelerators, keyboard navigation of modeless dialogs and
// sheets, which register themselves with the current loop) and idle
// handlers (run once whenever the queue runs empty after input, e.g. to update commands).
#pragma once

#include <windows.h>

#include <vector>

class CMessageFilter {
 public:
  // Returns true when the message was consumed and must not be dispatched.
  virtual bool PreTranslateMessage(MSG& message) = 0;

 protected:
  virtual ~CMessageFilter() = default;
};

class CIdleHandler {
 public:
  virtual void OnIdle() = 0;

 protected:
  virtual ~CIdleHandler() = default;
};

class CMessageLoop {
 public:
  // The new loop becomes the current loop of the calling thread until it is destroyed.
  CMessageLoop();
  ~CMessageLoop();
  CMessageLoop(const CMessageLoop&) = delete;
  CMessageLoop& operator=(const CMessageLoop&) = delete;

  // The calling thread's current loop, or null.
  static CMessageLoop* Current();

  // Filters and handlers may be added and removed at any time, also from inside a call;
  // a removed one is not called again. Filters run newest first.
  void AddMessageFilter(CMessageFilter* filter);
  void RemoveMessageFilter(CMessageFilter* filter);
  // Removes `filter` from every loop of the calling thread (the current one and the loops
  // it is nested in).
  static void RemoveFromThreadLoops(CMessageFilter* filter);
  void AddIdleHandler(CIdleHandler* handler);
  void RemoveIdleHandler(CIdleHandler* handler);

  // Runs until WM_QUIT and returns its exit code (-1 if retrieving a message failed).
  int Run();

  // One message through the filters, then translated and dispatched unless consumed.
  void ProcessMessage(MSG& message);
  // Runs every idle handler once, as the loop does when its queue runs empty after input.
  void RunIdleHandlers();

  // Whether a message counts as input that should run the idle handlers afterwards: mouse
  // moves, paints and the caret's system timer do not.
  static bool IsIdleMessage(const MSG& message);

 private:
  bool RunFilters(MSG& message);

  std::vector<CMessageFilter*> filters_;
  std::vector<CIdleHandler*> idleHandlers_;
  CMessageLoop* previous_;
};

// Translates the keys of an accelerator table into WM_COMMAND messages for `target`.
class CAcceleratorFilter : public CMessageFilter {
 public:
  CAcceleratorFilter(HWND target, HACCEL table) : target_(target), table_(table) {}
  bool PreTranslateMessage(MSG& message) override;

 private:
  HWND target_;
  HACCEL table_;
};
