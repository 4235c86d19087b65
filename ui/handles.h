// Owning wrappers for the handles and GDI objects the user interface creates: each closes,
// deletes or releases its handle exactly once, when it goes out of scope or is reset.
#pragma once

#include <windows.h>

#include <utility>

// One owner for one kind of handle. `Traits` names the handle type, its empty value and
// the call that frees it.
template <typename Traits>
class CUniqueHandle {
 public:
  using Type = typename Traits::Type;

  CUniqueHandle() = default;
  explicit CUniqueHandle(Type handle) : handle_(handle) {}
  CUniqueHandle(const CUniqueHandle&) = delete;
  CUniqueHandle& operator=(const CUniqueHandle&) = delete;
  CUniqueHandle(CUniqueHandle&& other) noexcept : handle_(other.Release()) {}
  CUniqueHandle& operator=(CUniqueHandle&& other) noexcept
  {
    if (this != &other) Reset(other.Release());
    return *this;
  }
  ~CUniqueHandle() { Reset(); }

  Type Get() const { return handle_; }
  bool IsValid() const { return handle_ != Traits::Empty(); }
  explicit operator bool() const { return IsValid(); }

  // Gives up ownership without freeing the handle.
  Type Release() { return std::exchange(handle_, Traits::Empty()); }

  // Frees the owned handle (if any) and takes `handle` instead.
  void Reset(Type handle = Traits::Empty())
  {
    const Type old = std::exchange(handle_, handle);
    if (old != Traits::Empty()) Traits::Free(old);
  }

 private:
  Type handle_ = Traits::Empty();
};

// Handles whose empty value is null, freed by one call.
template <typename Handle, auto FreeFunction>
struct NullHandleTraits {
  using Type = Handle;
  static Type Empty() { return nullptr; }
  static void Free(Type handle) { FreeFunction(handle); }
};

// File handles use INVALID_HANDLE_VALUE, not null, as their empty value.
struct FileHandleTraits {
  using Type = HANDLE;
  static Type Empty() { return INVALID_HANDLE_VALUE; }
  static void Free(Type handle) { CloseHandle(handle); }
};

using CKernelHandle = CUniqueHandle<NullHandleTraits<HANDLE, &CloseHandle>>;
using CFileHandle = CUniqueHandle<FileHandleTraits>;
using CBitmap = CUniqueHandle<NullHandleTraits<HBITMAP, &DeleteObject>>;
using CFont = CUniqueHandle<NullHandleTraits<HFONT, &DeleteObject>>;
using CBrush = CUniqueHandle<NullHandleTraits<HBRUSH, &DeleteObject>>;
using CMemoryDc = CUniqueHandle<NullHandleTraits<HDC, &DeleteDC>>;
using CIcon = CUniqueHandle<NullHandleTraits<HICON, &DestroyIcon>>;
using CMenu = CUniqueHandle<NullHandleTraits<HMENU, &DestroyMenu>>;
using CHook = CUniqueHandle<NullHandleTraits<HHOOK, &UnhookWindowsHookEx>>;
// A window destroyed with its owner object (for windows no object of ours wraps).
using COwnedWindow = CUniqueHandle<NullHandleTraits<HWND, &DestroyWindow>>;

// A device context of a window, released to that window at the end: the client area's
// (GetDC) or the whole window's, frame included (GetWindowDC).
class CWindowDc {
 public:
  enum class Area { kClient, kWholeWindow };
  explicit CWindowDc(HWND window, Area area = Area::kClient)
      : window_(window), dc_(area == Area::kClient ? GetDC(window) : GetWindowDC(window))
  {
  }
  CWindowDc(const CWindowDc&) = delete;
  CWindowDc& operator=(const CWindowDc&) = delete;
  ~CWindowDc()
  {
    if (dc_ != nullptr) ReleaseDC(window_, dc_);
  }
  HDC Get() const { return dc_; }

 private:
  HWND window_;
  HDC dc_;
};

// Selects a GDI object into a device context and puts the previous one back at the end,
// so the object can be deleted afterwards.
class CSelectObject {
 public:
  CSelectObject(HDC dc, HGDIOBJ object) : dc_(dc), previous_(SelectObject(dc, object)) {}
  CSelectObject(const CSelectObject&) = delete;
  CSelectObject& operator=(const CSelectObject&) = delete;
  ~CSelectObject()
  {
    if (previous_ != nullptr) SelectObject(dc_, previous_);
  }

 private:
  HDC dc_;
  HGDIOBJ previous_;
};
