#include "platform/kernel/kernel.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

namespace {

// Every page size is a multiple of this, so a piece that ends on a multiple lies within one page.
constexpr std::size_t kPiece = 4096;

// Copies memory that may not exist, by having the system read it.
class Probe {
 public:
  Probe() = default;
  Probe(const Probe&) = delete;
  Probe& operator=(const Probe&) = delete;
  ~Probe() {
    if (pipe_[0] >= 0) close(pipe_[0]);
    if (pipe_[1] >= 0) close(pipe_[1]);
  }

  // `size` is at most kPiece, within one page.
  bool Copy(char* to, const char* from, std::size_t size) {
    iovec local{to, size};
    iovec remote{const_cast<char*>(from), size};
    const ssize_t got = process_vm_readv(getpid(), &local, 1, &remote, 1, 0);
    if (got == static_cast<ssize_t>(size)) return true;
    if (got >= 0 || errno == EFAULT) return false;
    return CopyThroughPipe(to, from, size);  // the direct way is not allowed here
  }

 private:
  bool CopyThroughPipe(char* to, const char* from, std::size_t size) {
    if (pipe_[0] < 0 && pipe2(pipe_, O_CLOEXEC) != 0) {
      pipe_[0] = pipe_[1] = -1;
      return false;
    }
    // A pipe holds at least one piece, so neither call blocks.
    if (write(pipe_[1], from, size) != static_cast<ssize_t>(size)) return false;
    return read(pipe_[0], to, size) == static_cast<ssize_t>(size);
  }

  int pipe_[2] = {-1, -1};
};

}  // namespace

int MulDiv(int number, int numerator, int denominator) {
  if (denominator == 0) return -1;
  // |product| ≤ 2^62, so neither it nor the added half overflows.
  const std::int64_t product = std::int64_t{number} * numerator;
  const bool negative = (product < 0) != (denominator < 0);
  const std::int64_t divisor = denominator < 0 ? -std::int64_t{denominator} : denominator;
  const std::int64_t magnitude = ((product < 0 ? -product : product) + divisor / 2) / divisor;
  const std::int64_t result = negative ? -magnitude : magnitude;
  if (result < std::numeric_limits<int>::min() || result > std::numeric_limits<int>::max()) {
    return -1;
  }
  return static_cast<int>(result);
}

BOOL IsBadStringPtrA(const char* text, UINT_PTR max) {
  if (text == nullptr) return TRUE;
  Probe probe;
  char bytes[kPiece];
  auto address = reinterpret_cast<std::uintptr_t>(text);
  while (max > 0) {
    const std::size_t size = std::min<UINT_PTR>(max, kPiece - address % kPiece);
    if (!probe.Copy(bytes, reinterpret_cast<const char*>(address), size)) return TRUE;
    if (std::memchr(bytes, '\0', size) != nullptr) return FALSE;
    address += size;
    max -= size;
  }
  return FALSE;
}

BOOL DisableThreadLibraryCalls(HMODULE module) { return module != nullptr ? TRUE : FALSE; }
