// The pairs and heaps of contours that every engine combines, and the loop over them.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "contours.h"
#include "harness.h"

namespace bench {

enum class Operation { kUnite, kSubtract };

/// `others` are united with `main`, or subtracted from it.
struct Work {
  Xyz main;
  std::vector<Xyz> others;
  Operation operation;
};

using MakeJob = std::function<Job(const Work&)>;

/// Measures an engine on the families named, all where there are none, and prints the
/// lines. The argument of the program is --quick or nothing.
int RunBooleans(int argc, char** argv, const std::string& engine, const MakeJob& makeJob,
                const std::vector<std::string>& families = {});

}  // namespace bench
