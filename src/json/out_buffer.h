// Script out-buffers: a text buffer plus the size the caller gave for it.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>

namespace ZOLVA {

// A buffer is usable when it exists and has room for at least the NUL.
inline bool IsUsableBuffer(const char* buffer, int size) { return buffer != nullptr && size >= 1; }

// Copies at most size - 1 bytes and a NUL right after them; a longer text is
// cut silently. An unusable buffer is left alone.
inline void CopyToBuffer(const std::string& text, char* buffer, int size) {
  if (!IsUsableBuffer(buffer, size)) return;
  const size_t n = std::min(text.size(), static_cast<size_t>(size) - 1);
  std::memcpy(buffer, text.data(), n);
  buffer[n] = '\0';
}

}  // namespace ZOLVA
