// What is made at the first need and kept, by any thread: the first to be done publishes it.
#pragma once

#include <atomic>
#include <memory>

namespace zelvan {

template <class Thing>
class OnceMade {
 public:
  OnceMade() = default;
  OnceMade(const OnceMade&) = delete;
  OnceMade& operator=(const OnceMade&) = delete;
  ~OnceMade() { delete Get(); }

  /// Null while there is none.
  [[nodiscard]] const Thing* Get() const noexcept { return made_.load(std::memory_order_acquire); }

  /// The thing, made of the arguments if there is none yet. Throws what its constructor throws.
  template <class... Arguments>
  const Thing& Make(const Arguments&... arguments) const {
    if (const Thing* const made = Get()) return *made;
    auto mine = std::make_unique<const Thing>(arguments...);
    const Thing* others = nullptr;
    if (made_.compare_exchange_strong(others, mine.get(), std::memory_order_acq_rel)) {
      return *mine.release();
    }
    return *others;
  }

 private:
  mutable std::atomic<const Thing*> made_{nullptr};
};

}  // namespace zelvan
