#include "tests/otherhost/other_host.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include "elugraph/host/controls.h"

namespace other_host {

// None of these is ever destroyed: the library calls until the process ends.
std::vector<std::string>& Calls() {
  static auto* const calls = new std::vector<std::string>;
  return *calls;
}

Answers& Answer() {
  static auto* const answers = new Answers;
  return *answers;
}

void Called(const std::string& what) {
  Calls().push_back(what);
  if (Answer().onCall) Answer().onCall(what);
}

namespace {

char empty[1] = "";

char* Duplicate(const char* text) {
  if (text == nullptr || *text == '\0') return empty;
  char* copy = new char[std::strlen(text) + 1];
  return std::strcpy(copy, text);
}

// This host's buffers do not grow: longer text is cut.
void Print(PrintBufferBase& buffer, const char* format, va_list arguments) {
  std::vsnprintf(buffer.text, static_cast<std::size_t>(buffer.capacity), format, arguments);
  buffer.length = static_cast<int>(std::strlen(buffer.text));
}

}  // namespace
}  // namespace other_host

using other_host::Called;

// ---- kernel

char* str::GetStrNull() { return other_host::empty; }
str::str() : text(other_host::empty) {}
str::str(const char* characters) : text(other_host::Duplicate(characters)) {}
str::str(const str& other) : text(other_host::Duplicate(other.text)) {}
str::~str() {
  if (text != other_host::empty) delete[] text;
}
str& str::operator=(const str& other) {
  str copy(other);
  std::swap(text, copy.text);
  return *this;
}
bool str::Append(const char* characters) {
  if (characters != nullptr) *this = str((std::string(text) + characters).c_str());
  return true;
}

PrintBufferBase::PrintBufferBase(int roomCapacity, const char* format, ...)
    : text(reinterpret_cast<char*>(this + 1)), capacity(roomCapacity), length(0) {
  va_list arguments;
  va_start(arguments, format);
  other_host::Print(*this, format, arguments);
  va_end(arguments);
}
PrintBufferBase::~PrintBufferBase() = default;
int sprintf(PrintBufferBase& buffer, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  other_host::Print(buffer, format, arguments);
  va_end(arguments);
  return buffer.length;
}

// This host has no settings.
str& GetIniFileEntry(str& value, const char* section, const char* key, const char* fallback,
                     const char*) {
  Called(std::string("read ") + section + "/" + key);
  return value = str(fallback);
}
bool vsetinifile(const char* section, const char* key, const char* value, const char*) {
  Called(std::string("write ") + section + "/" + key + "=" + (value != nullptr ? value : ""));
  return true;
}
const char* muiGetString(unsigned number) {
  return number == 1050000 ? "%g %s" : number == 1050005 ? "%s" : "text";
}
HMODULE muiGetDlgTemplateModule(HMODULE module, const char*) { return module; }
void exceptout(const char* format, ...) {
  char line[200];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(line, sizeof line, format, arguments);
  va_end(arguments);
  Called(std::string("exceptout ") + line);
}
void int3call() { Called("int3call"); }

// ---- engine

const char* CompTypeTxt(int) { return "quantity"; }
bool developer_access() { return other_host::Answer().developer; }
LONG minimum(const LONG* samples, LONG first, LONG last) {
  return static_cast<LONG>(std::min_element(samples + first, samples + last + 1) - samples);
}
LONG maximum(const LONG* samples, LONG first, LONG last) {
  return static_cast<LONG>(std::max_element(samples + first, samples + last + 1) - samples);
}

TMatrix::TMatrix(int rows, int columns, TVectorT::VTYPE type)
    : rowPointers(new void*[static_cast<std::size_t>(rows)]),
      rowCount(rows),
      columnCount(columns),
      elementType(type) {
  for (LONG r = 0; r < rows; ++r) {
    rowPointers[r] = new double[static_cast<std::size_t>(columns)]();
  }
}
TMatrix::~TMatrix() {
  for (LONG r = 0; r < rowCount; ++r) delete[] static_cast<double*>(rowPointers[r]);
  delete[] rowPointers;
}
void TMatrix::Zer() {
  for (LONG r = 0; r < rowCount; ++r) {
    std::memset(rowPointers[r], 0, static_cast<std::size_t>(columnCount) * sizeof(double));
  }
}
// Gauss-Jordan without pivoting: enough for the positive definite matrices that the library divides
// by.
int TDoubleMatrix::operator/=(TDoubleMatrix& divisor) {
  for (LONG step = 0; step < rowCount; ++step) {
    const double pivot = divisor[step][step];
    for (LONG c = 0; c < rowCount; ++c) divisor[step][c] /= pivot;
    for (LONG c = 0; c < columnCount; ++c) (*this)[step][c] /= pivot;
    for (LONG r = 0; r < rowCount; ++r) {
      const double factor = divisor[r][step];
      if (r == step || factor == 0.0) continue;
      for (LONG c = 0; c < rowCount; ++c) divisor[r][c] -= factor * divisor[step][c];
      for (LONG c = 0; c < columnCount; ++c) (*this)[r][c] -= factor * (*this)[step][c];
    }
  }
  return 1;
}

SIZE GetTextExtent(HWND, const char* text, HDC hdc, int length) {
  SIZE extent{0, 0};
  GetTextExtentPoint32A(hdc, text, length, &extent);
  return extent;
}

// ---- records

float TChannel::GetCyctimeRT() { return samplePeriod; }
void TChannel::UpdateCyctimeRT() { Called("UpdateCyctimeRT"); }

COLORREF ORVWCOLORS::back() const { return entries[0]; }
COLORREF ORVWCOLORS::alterground() const { return entries[1]; }
COLORREF ORVWCOLORS::axis() const { return entries[2]; }
COLORREF ORVWCOLORS::baseline() const { return entries[3]; }
COLORREF ORVWCOLORS::chan(int index, ChromColor::_default_color_) const {
  return entries[4 + index];
}

bool CalibPool::PointIsExcluded(component*, int) { return false; }
double CalibPool::PointToX(component*, int point) { return point + 1.0; }
double CalibPool::PointToY(component*, int point) { return 10.0 * (point + 1.0); }
double CalibPool::XtoYtab(component*, double x) { return 10.0 * x; }
double CalibPool::XtoStatWeight(component*, double) { return 1.0; }

void chromatogram::AddRef() const { Called("AddRef"); }
void chromatogram::Release() const { Called("Release"); }
chromatogram* chromatogram::pIs(const void* record) {
  return static_cast<chromatogram*>(const_cast<void*>(record));
}
bool chromatogram::bHasRawData() {
  Called("bHasRawData");
  return other_host::Answer().rawData;
}
double chromatogram::ActualDuration() { return runDurationMs / 1000.0; }
short& chromatogram::curchan() { return other_host::Answer().currentChannel; }
double chromatogram::units(double seconds) {
  if (other_host::Answer().unitsFail) throw std::runtime_error("units");
  return seconds * other_host::Answer().unitsPerSecond;
}
double chromatogram::rtime(int number) {
  return peaks.At(number - 1)->apex * static_cast<double>(sampleInterval);
}
void chromatogram::zero(LONG index) {
  Called("zero " + std::to_string(index));
  TChannel* channel = channels.At(curchan());
  channel->zero = channel->samples[index];
}
void chromatogram::basecalc(int channel) { Called("basecalc " + std::to_string(channel)); }
void chromatogram::recognize() { Called("recognize"); }
void chromatogram::update_quant() { Called("update_quant"); }
void chromatogram::recalctime() { Called("recalctime"); }
int chromatogram::splitIndex() { return other_host::Answer().splitIndex; }

const char* THoldWindow::xunitsTxt() const { return "s"; }
