#include "app/formats/read_run.h"

#include <algorithm>
#include <new>
#include <string_view>
#include <utility>

#include "app/formats/andi_file.h"
#include "app/formats/column_file.h"
#include "app/formats/data_cube.h"
#include "app/formats/jcamp_file.h"
#include "app/formats/long_table.h"
#include "app/formats/matrix_file.h"
#include "app/formats/matrix_report.h"
#include "app/formats/mzml_file.h"
#include "app/formats/sampled_channels.h"
#include "app/formats/section_report.h"
#include "app/formats/signal_pairs.h"
#include "app/formats/text.h"

namespace app {
namespace {

RunData ReadText(const std::string& name, std::string_view bytes, const ReadOptions& options) {
  const std::string text = DecodeText(bytes);
  if (text.find('\0') != std::string::npos) {
    throw FileError(name + ": holds binary data of an unknown kind");
  }
  if (options.SayMatrix()) return ReadMatrixFile(name, text, options);
  if (IsJcamp(text)) return ReadJcamp(name, text, options);
  // A heading, which begins like an array of JSON, is the narrower test of the two.
  if (IsSectionReport(text)) return ReadSectionReport(name, text, options);
  if (IsJson(text)) return ReadDataCubes(name, text, options);
  if (IsMatrixReport(text)) return ReadMatrixReport(name, text, options);
  if (IsSampledChannels(text)) return ReadSampledChannels(name, text);
  if (IsLongTable(text)) return ReadLongTable(name, text, options);
  if (IsSignalPairs(text)) return ReadSignalPairs(name, text, options);
  if (IsMatrixFile(name, text, options)) return ReadMatrixFile(name, text, options);
  return ReadColumnFile(name, text, options);
}

RunData Recognise(const std::string& name, std::string_view bytes, const ReadOptions& options) {
  if (bytes.empty()) throw FileError(name + ": is empty");
  if (options.SayMatrix() && (IsNetCdf(bytes) || IsMzMl(bytes))) {
    throw FileError(name + ": is not a matrix as text; it has axes of its own");
  }
  RunData run = IsNetCdf(bytes) ? ReadAndiFile(name, bytes, options)
                : IsMzMl(bytes) ? ReadMzMl(name, bytes, options)
                                : ReadText(name, bytes, options);
  std::stable_sort(run.peaks.begin(), run.peaks.end(), [](const Peak& a, const Peak& b) {
    return std::pair(a.channel, a.apexS) < std::pair(b.channel, b.apexS);
  });
  return run;
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
