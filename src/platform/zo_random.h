#pragma once
#include <cstdint>

/// The pseudo-random sequence of Microsoft's C run-time rand()/srand(), kept
/// per instance so that two compilations on two threads never share a seed.
/// Seeded with 1 it yields 41, 18467, 6334, 26500, 19169, ...
class ZoMsvcRandom {
  public:
    static constexpr int kMax = 0x7FFF;

    explicit ZoMsvcRandom(uint32_t seed = 1) noexcept : seed_(seed) {}
    void Seed(uint32_t seed) noexcept { seed_ = seed; }
    /// Next value in 0..kMax.
    int Next() noexcept {
        seed_ = seed_ * 214013u + 2531011u;
        return static_cast<int>((seed_ >> 16) & 0x7FFF);
    }

  private:
    uint32_t seed_;
};
