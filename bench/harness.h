// Runs jobs in processes of their own, so that a slow or crashing peer costs its
// entry alone, and writes one line for each.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "job.h"

namespace bench {

/// What is measured: the columns that a line opens with.
struct Entry {
  std::string part;    ///< "triangulation" or "booleans"
  std::string family;  ///< what is worked on
  long long size;      ///< n, or k of k x k
  std::size_t vertices;
  std::string engine;
};

/// How far an area may be from the true one before the answer is called wrong.
/// What is not known is left 0: the report then compares the engines.
struct Expected {
  double area = 0;
  double tolerance = 0;
};

class Harness {
 public:
  /// One run may take `limit` seconds, repetitions six tenths of that together. Families
  /// whose names do not contain `only` are left out.
  Harness(double limit, std::string only) : limit_(limit), only_(std::move(only)) {}

  /// Writes part, family, size, vertices, engine, status, ms, runs, area, expected
  /// area, tolerance and peak bytes, separated by tabs, to standard output. Status is
  /// "ok", "limit" (too slow), "skipped" (too slow at a smaller size of the family,
  /// or certain to be), "refused" (an exception) or "crashed".
  void Measure(const Entry& entry, const Expected& expected,
               const std::function<std::unique_ptr<Job>()>& make);

 private:
  double limit_;
  std::string only_;
  std::map<std::string, double> tooLargeFrom_;  // engine and family: the vertices
};

}  // namespace bench
