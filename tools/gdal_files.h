// What the readers and writers by GDAL share.
#pragma once

#include <cpl_error.h>
#include <gdal.h>

#include <memory>
#include <string>

namespace tool {

// Gathers what GDAL says while it stands, in place of standard error.
class GdalWords {
 public:
  GdalWords() { CPLPushErrorHandlerEx(Add, &words_); }
  ~GdalWords() { CPLPopErrorHandler(); }
  GdalWords(const GdalWords&) = delete;
  GdalWords& operator=(const GdalWords&) = delete;

  const std::string& Text() const { return words_; }

 private:
  static void CPL_STDCALL Add(CPLErr kind, CPLErrorNum /*number*/, const char* words) {
    if (kind == CE_Debug) return;
    auto& all = *static_cast<std::string*>(CPLGetErrorHandlerUserData());
    if (all.find(words) == std::string::npos) all += (all.empty() ? "" : "; ") + std::string(words);
  }

  std::string words_;
};

struct DatasetCloser {
  void operator()(GDALDatasetH dataset) const { GDALClose(dataset); }
};
using Dataset = std::unique_ptr<void, DatasetCloser>;

}  // namespace tool
