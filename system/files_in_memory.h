// Files kept in memory instead of on a disk: a backend of the file routines (file_backend.h)
// that a program links in place of the system's, so that opening, reading and writing a
// file costs no system call. The fuzz targets use it to run each input through the whole
// file path many thousands of times a second. The sharing rules of system/file.h hold as
// on a disk; paths are compared as given.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// Places a file of these bytes under `path`, replacing any file of that name.
void PutFileInMemory(const std::u16string& path, const uint8_t* bytes, size_t size);

// The bytes of the file under `path`; false when there is none.
bool GetFileInMemory(const std::u16string& path, std::vector<uint8_t>* bytes);

// Deletes every file. Files still open stay readable through their open handles.
void ClearFilesInMemory();
