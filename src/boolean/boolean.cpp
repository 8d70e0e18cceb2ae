// The driver of the Boolean engine (boolean.h): its phases in order.
#include "boolean/boolean.h"

#include <new>

#include "boolean/assembly.h"
#include "boolean/crossing_analysis.h"
#include "boolean/labelling.h"
#include "boolean/operand.h"
#include "boolean/sweep.h"
#include "polygon/area.h"

namespace zelvan {

namespace {

// Runs fallible work; memory that could not be had is ERR::NOMEM however it shows.
template <class Work>
ERR::CODE Guarded(Work work) noexcept {
  try {
    work();
    return ERR::OK;
  } catch (const std::bad_alloc&) {
    return ERR::NOMEM;
  } catch (...) {
    return ERR::Clear();
  }
}

Area* Assemble(const Area* a, const Area* b, BoolOp op) {
  OwnedRing result;
  PendingHoles pendingHoles;
  const auto collect = [&](Contour* contour) { CollectContour(contour, result, pendingHoles, op); };
  ForEachContour(const_cast<Area*>(a), collect);
  ForEachContour(const_cast<Area*>(b), collect);
  PlaceHoles(result, pendingHoles);
  return result.release();
}

// What is left of one operand when the other one is empty.
bool KeepsLoneOperand(bool isFirst, BoolOp op) noexcept {
  return op == UNION || op == XOR || (op == SUBTRACT && isFirst);
}

}  // namespace

void LabelCopies(Area* a, Area* b, SweepRecords& records, WindingRule rule) {
  MarkOperand(a, true);
  MarkOperand(b, false);
  SegmentTable table;
  table.reserve(CountVertices(a) + CountVertices(b));
  FillSegments(table, a);
  FillSegments(table, b);
  Sweep sweep(records);
  sweep.Run(table);
  AnalysePixels(sweep.Pixels(), a, b, records.entries);
  LabelEdges(sweep.Seeds(), rule);
  LabelContours(a);
  LabelContours(b);
}

ERR::CODE CombineCopies(Area* a, Area* b, Area*& result, BoolOp op, SweepRecords& records,
                        WindingRule rule) noexcept {
  result = nullptr;
  return Guarded([&] {
    LabelCopies(a, b, records, rule);
    result = Assemble(a, b, op);
  });
}

ERR::CODE Boolean(const Area* a, const Area* b, Area*& result, BoolOp op) noexcept {
  result = nullptr;
  return Guarded([&] {
    if (a == nullptr || b == nullptr) {
      const Area* lone = a != nullptr ? a : b;
      if (KeepsLoneOperand(a != nullptr, op)) result = CopyAreas(lone);
      return;
    }
    SweepRecords records;
    const OwnedRing copyA(CopyAreas(a));
    const OwnedRing copyB(CopyAreas(b));
    const ERR::CODE code = CombineCopies(copyA.first, copyB.first, result, op, records);
    if (code != ERR::OK) ERR::Raise(code);
  });
}

}  // namespace zelvan
