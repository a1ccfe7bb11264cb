// Texts and print buffers of the embedded host.
#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#include "elugraph/host/kernel.h"

namespace {

// Memory of the C runtime, or the shared empty text where there is nothing to hold.
char* Copy(const char* characters) {
  if (characters == nullptr || *characters == '\0') return str::GetStrNull();
  char* copy = strdup(characters);
  if (copy == nullptr) throw std::bad_alloc();
  return copy;
}

void Free(char* text) {
  if (text != str::GetStrNull()) std::free(text);
}

char* Room(PrintBufferBase& buffer) { return reinterpret_cast<char*>(&buffer + 1); }

// The old text stays readable until the new one is complete: it may be among the arguments.
int Format(PrintBufferBase& buffer, const char* format, va_list arguments) {
  va_list again;
  va_copy(again, arguments);
  char draft[600];
  int length =
      format != nullptr ? std::max(std::vsnprintf(draft, sizeof draft, format, arguments), 0) : 0;
  char* grown = nullptr;
  if (length >= std::min(buffer.capacity, static_cast<int>(sizeof draft))) {
    const std::size_t needed = static_cast<std::size_t>(length) + 1;
    grown = static_cast<char*>(std::malloc(needed));
    if (grown != nullptr) {
      std::vsnprintf(grown, needed, format, again);
    } else {
      length = std::min(buffer.capacity, static_cast<int>(sizeof draft)) - 1;
    }
  }
  va_end(again);

  char* room = Room(buffer);
  if (buffer.text != nullptr && buffer.text != room) std::free(buffer.text);
  buffer.length = std::max(length, 0);
  if (buffer.length < buffer.capacity) {
    std::memcpy(room, grown != nullptr ? grown : draft, static_cast<std::size_t>(buffer.length));
    room[buffer.length] = '\0';
    std::free(grown);
    buffer.text = room;
  } else {
    buffer.text = grown;
  }
  return buffer.length;
}

}  // namespace

char* str::GetStrNull() {
  static char empty[1] = {'\0'};
  return empty;
}

str::str() : text(GetStrNull()) {}
str::str(const char* characters) : text(Copy(characters)) {}
str::str(const str& other) : text(Copy(other.text)) {}
str::~str() { Free(text); }

str& str::operator=(const str& other) {
  if (this != &other) {
    char* copy = Copy(other.text);
    Free(text);
    text = copy;
  }
  return *this;
}

bool str::Append(const char* characters) {
  if (characters == nullptr || *characters == '\0') return true;
  const std::size_t head = std::strlen(text);
  const std::size_t tail = std::strlen(characters);
  char* joined = static_cast<char*>(std::malloc(head + tail + 1));
  if (joined == nullptr) return false;
  std::memcpy(joined, text, head);
  std::memcpy(joined + head, characters, tail + 1);
  Free(text);
  text = joined;
  return true;
}

PrintBufferBase::PrintBufferBase(int roomCapacity, const char* format, ...)
    : text(nullptr), capacity(roomCapacity), length(0) {
  va_list arguments;
  va_start(arguments, format);
  Format(*this, format, arguments);
  va_end(arguments);
}

PrintBufferBase::~PrintBufferBase() {
  if (text != Room(*this)) std::free(text);
}

int sprintf(PrintBufferBase& buffer, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int length = Format(buffer, format, arguments);
  va_end(arguments);
  return length;
}
