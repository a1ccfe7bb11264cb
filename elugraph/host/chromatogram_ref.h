// Counted reference to a host's chromatogram.
#pragma once

#include "elugraph/host/records.h"

#pragma pack(push, 1)

// Takes a reference on storing a non-null pointer and drops it on destruction.
class ChromatogramRef {
 public:
  explicit ChromatogramRef(chromatogram* chrom) : chrom_(chrom) {
    if (chrom_ != nullptr) chrom_->AddRef();
  }
  ChromatogramRef(const ChromatogramRef& other) : ChromatogramRef(other.chrom_) {}
  ChromatogramRef& operator=(const ChromatogramRef& other) {
    if (this == &other) return *this;
    if (other.chrom_ != nullptr) other.chrom_->AddRef();
    if (chrom_ != nullptr) chrom_->Release();
    chrom_ = other.chrom_;
    return *this;
  }
  ~ChromatogramRef() {
    if (chrom_ != nullptr) chrom_->Release();
  }

  chromatogram* get() const { return chrom_; }
  chromatogram* operator->() const { return chrom_; }
  explicit operator bool() const { return chrom_ != nullptr; }

 private:
  chromatogram* chrom_;
};

#pragma pack(pop)
