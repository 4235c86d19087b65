// CMessageHandler is the base of every object that receives a window's messages: windows of
// our classes, dialogs, property pages and property sheets. It owns the object's part of a
// window's life, the same for every kind:
//   - attach: the object is stored with its window at the window's first message (each kind
//     knows how its first message names the object);
//   - delivery: each message passes the exception barrier (ui/handler_failure.h), is offered
//     to the object of the control that sent it (reflection, below), then to HandleMessage;
//   - final message: at WM_NCDESTROY the object is detached, a modeless window leaves the
//     message loop, and OnFinalMessage runs; the kind's default processing follows and uses
//     nothing of the object, which may have deleted itself.
// Each kind keeps only what truly differs: how the first message attaches the object, and how
// an answer or the default processing reaches the system (a window procedure's result, the
// dialog manager's DWLP_MSGRESULT, a subclass's DefSubclassProc).
//
// Reflection: a WM_NOTIFY or control WM_COMMAND that a child control sends to its parent is
// first offered to the control's own object (OnReflectedNotify, OnReflectedCommand), e.g. a
// superclassed list view handles its own column clicks. Only when that object does not handle
// it, the parent's OnNotify or OnCommand sees it. Notifications of a control without an
// object of its own go to its parent as usual: a list view's header is a child of the list
// view, so the list view's object sees the header's notifications in its own OnNotify.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "ui/window_handle.h"

class CMessageFilter;

class CMessageHandler : public CWindow {
 public:
  CMessageHandler(const CMessageHandler&) = delete;
  CMessageHandler& operator=(const CMessageHandler&) = delete;

  // The object whose messages a window of ours delivers, or null for any other window.
  static CMessageHandler* FromHandle(HWND window);

 protected:
  CMessageHandler() = default;
  // A window that outlives its object is detached (its messages get the default processing
  // from then on), leaves the message loop and is destroyed.
  virtual ~CMessageHandler();

  // Every message passes here after reflection. Returns true when the message was handled,
  // with its result in `result`; false hands it on to the default processing. The base
  // routes WM_COMMAND, WM_NOTIFY, WM_TIMER and WM_DESTROY to the handlers below.
  virtual bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);

  // A command (menu, accelerator, control notification); true when handled.
  virtual bool OnCommand(UINT id, UINT code, HWND control);
  // A control notification; true when handled, with the notification's answer in `result`.
  virtual bool OnNotify(NMHDR& header, LRESULT& result);
  // A notification this object's own window sent to its parent, offered here first; true
  // when handled, with the answer in `result`.
  virtual bool OnReflectedNotify(NMHDR& header, LRESULT& result);
  // A command notification (BN_CLICKED, EN_CHANGE...) this object's own window sent to its
  // parent, offered here first; true when handled.
  virtual bool OnReflectedCommand(UINT code);
  virtual bool OnTimer(UINT_PTR id);
  // The window is being destroyed (its children still exist); default processing follows.
  virtual void OnDestroy() {}
  // The window is gone (at WM_NCDESTROY): the object may now be deleted by itself.
  virtual void OnFinalMessage() {}

  // Binds this object to `window`: from now on its messages reach the handlers.
  void Attach(HWND window);
  // Unbinds the object from its window, which lives on without it; returns the window.
  HWND Detach();
  // Delivers one message of the attached window (see above). Returns true with `result` when
  // a handler answered; false when the kind's default processing must follow. Whatever a
  // handler throws is reported and counts as not handled.
  bool Deliver(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) noexcept;
  // Registers `filter` (this modeless window's keyboard navigation) with the calling
  // thread's current message loop, if there is one, until the window is gone.
  void JoinMessageLoop(CMessageFilter& filter);

 private:
  bool OfferToSender(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
  void LeaveMessageLoop();

  CMessageFilter* loopFilter_ = nullptr;
};
