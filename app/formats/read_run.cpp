#include "app/formats/read_run.h"

#include <new>
#include <string_view>
#include <utility>

#include "app/formats/column_file.h"
#include "app/formats/text.h"

namespace app {
namespace {

// Name of a kind that is known and not read; null for all others.
const char* UnreadKind(std::string_view bytes) {
  if (bytes.starts_with("CDF\x01") || bytes.starts_with("CDF\x02")) return "a netCDF file";
  if (bytes.starts_with("\x89HDF")) return "an HDF5 file";
  return nullptr;
}

const char* UnreadTextKind(std::string_view text) {
  while (!text.empty() && (text.front() == '\n' || text.front() == '\r' || text.front() == ' ')) {
    text.remove_prefix(1);
  }
  if (text.starts_with('{') || text.starts_with("[{")) return "a JSON file";
  if (text.starts_with('<')) return "an XML file";
  if (text.starts_with("##")) return "a JCAMP-DX file";
  if (text.starts_with('[')) return "a report of several sections";
  return nullptr;
}

RunData Recognise(const std::string& name, std::string_view bytes, const ReadOptions& options) {
  const auto refuse = [&name](const char* kind) {
    if (kind != nullptr) throw FileError(name + ": is " + kind + ", which is not read yet");
  };
  if (bytes.empty()) throw FileError(name + ": is empty");
  refuse(UnreadKind(bytes));
  const std::string text = DecodeText(bytes);
  refuse(UnreadTextKind(text));
  if (text.find('\0') != std::string::npos) {
    throw FileError(name + ": holds binary data of an unknown kind");
  }
  return ReadColumnFile(name, text, options);
}

// Runs `read`, and turns what it throws into `error`.
template <typename Reader>
bool Guarded(const std::string& name, RunData& run, std::string& error, const Reader& read) {
  try {
    run = read();
    return true;
  } catch (const FileError& failure) {
    error = failure.what();
  } catch (const std::bad_alloc&) {
    error = name + ": does not fit into memory";
  }
  return false;
}

}  // namespace

bool ReadRun(const std::string& path, const ReadOptions& options, RunData& run,
             std::string& error) {
  return Guarded(path, run, error, [&] { return Recognise(path, ReadBytes(path), options); });
}

bool ReadRunBytes(const std::string& name, std::string_view bytes, const ReadOptions& options,
                  RunData& run, std::string& error) {
  return Guarded(name, run, error, [&] { return Recognise(name, bytes, options); });
}

}  // namespace app
