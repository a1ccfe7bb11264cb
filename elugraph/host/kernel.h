// Services of the host's kernel: texts, print buffers, settings, diagnostics.
#pragma once

#include "elugraph/host/export.h"
#include "platform/gfx/types.h"

// A text: a pointer to its characters, which it owns unless they are the shared empty text.
class ELUGRAPH_HOST str {
 public:
  str();
  // A null pointer gives the empty text.
  explicit str(const char* characters);
  str(const str& other);
  str& operator=(const str& other);
  ~str();

  // The shared empty text; never freed.
  static char* GetStrNull();
  // Null appends nothing. False where memory ran out; the text is then unchanged.
  bool Append(const char* characters);

  const char* c_str() const { return text; }
  bool empty() const { return *text == '\0'; }

  char* text;
};

// A print buffer: text pointer, capacity, length, then room for `capacity` characters, the
// terminating null included. Text longer than the room grows into memory of its own, which the
// destructor frees; where there is none to be had the text is cut to the room. `length` is the
// length of the text without its null.
class ELUGRAPH_HOST PrintBufferBase {
 public:
  PrintBufferBase(const PrintBufferBase&) = delete;
  PrintBufferBase& operator=(const PrintBufferBase&) = delete;
  ~PrintBufferBase();

  char* text;
  int capacity;
  int length;

 protected:
  // Formats like printf. The room for the characters directly follows the base object; `capacity`
  // is at least 1.
  PrintBufferBase(int capacity, const char* format, ...) __attribute__((format(printf, 3, 4)));
};

// Formats into the buffer in place of its text, which may be among the arguments; returns the
// length of the text, 0 for a format that cannot be applied.
ELUGRAPH_HOST int sprintf(PrintBufferBase& buffer, const char* format, ...)
    __attribute__((format(printf, 2, 3)));

// Capacities in use: 20, 64, 100, 256 and 512.
template <int kCapacity>
class PrintBuffer : public PrintBufferBase {
 public:
  template <typename... Arguments>
  explicit PrintBuffer(const char* format, Arguments... arguments)
      : PrintBufferBase(kCapacity, format, arguments...) {}
  PrintBuffer() : PrintBufferBase(kCapacity, "%s", "") {}

 private:
  char characters_[kCapacity];
};

// `value` gets the entry, or `fallback` (null: the empty text) where the key is absent or the file
// cannot be read. Section and key are compared without regard to case (ASCII). A null `file` is the
// host's settings file. Returns `value`.
ELUGRAPH_HOST str& GetIniFileEntry(str& value, const char* section, const char* key,
                                   const char* fallback, const char* file);
// Sets the entry; a null `value` removes it. False where it could not be written (file, names or a
// value that a line cannot hold); the file is then unchanged.
ELUGRAPH_HOST bool vsetinifile(const char* section, const char* key, const char* value,
                               const char* file);

// Localized text by number; the empty text for an unknown number.
ELUGRAPH_HOST const char* muiGetString(unsigned number);
// Module that holds the dialog template of that name (or number, as for FindResourceA).
ELUGRAPH_HOST HMODULE muiGetDlgTemplateModule(HMODULE module, const char* name);

// One diagnostic line.
ELUGRAPH_HOST void exceptout(const char* format, ...) __attribute__((format(printf, 1, 2)));
// Signals an impossible state to a debugger; execution goes on.
ELUGRAPH_HOST void int3call();
