#include <windows.h>

#include <chrono>

#include "disk_limit.h"

const char* DiskLimitMethod()
{
  return "unbuffered 1 MiB WriteFile calls, then one FlushFileBuffers";
}

DiskLimit MeasureDiskLimit(const std::string& directory, uint64_t bytes)
{
  constexpr DWORD kChunk = 1u << 20;
  const std::string path = directory + "\\disk-limit.bin";
  void* buffer = VirtualAlloc(nullptr, kChunk, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
  if (buffer == nullptr) return DiskLimit{-1.0, 0.0};
  const auto start = std::chrono::steady_clock::now();
  HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL | FILE_FLAG_NO_BUFFERING, nullptr);
  bool written = file != INVALID_HANDLE_VALUE;
  for (uint64_t done = 0; written && done < bytes; done += kChunk) {
    DWORD count = 0;
    written = WriteFile(file, buffer, kChunk, &count, nullptr) && count == kChunk;
  }
  written = written && FlushFileBuffers(file);
  const auto flushed = std::chrono::steady_clock::now();
  if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
  DeleteFileA(path.c_str());
  SettleFreedBlocks(directory);
  VirtualFree(buffer, 0, MEM_RELEASE);
  const std::chrono::duration<double> writing = flushed - start;
  const std::chrono::duration<double> deleting = std::chrono::steady_clock::now() - flushed;
  return DiskLimit{written ? writing.count() : -1.0, deleting.count()};
}

void SettleFreedBlocks(const std::string& directory)
{
  HANDLE folder = CreateFileA(directory.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                              nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (folder == INVALID_HANDLE_VALUE) return;
  FlushFileBuffers(folder);
  CloseHandle(folder);
}
