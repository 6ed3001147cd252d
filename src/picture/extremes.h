#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace welvane {

/// Where the extremes of any stretch of a channel stand; NaN is no sample. From `longest` samples on it is looked up in
/// blocks of 64, so that a window can ask again for each zoom.
class Extremes {
  public:
    static constexpr std::size_t longest = 2'000'000, blockSize = 64;

    /// The samples have to outlive it.
    explicit Extremes(std::span<const double> samples, std::size_t withBlocksFrom = longest);

    /// Indices of samples that are there: the first, the last, the least and the greatest (the earliest of equals).
    struct Found {
        bool any = false;
        std::size_t first = 0, last = 0, least = 0, greatest = 0;
    };
    /// Of the samples `begin` to `end` - 1.
    Found over(std::size_t begin, std::size_t end) const;

  private:
    struct Block {
        bool any = false;
        std::uint8_t first = 0, last = 0, least = 0, greatest = 0;
    };
    void addSamples(std::size_t begin, std::size_t end, Found& found) const;
    void addBlock(std::size_t number, Found& found) const;
    void add(std::size_t first, std::size_t last, std::size_t least, std::size_t greatest, Found& found) const;

    std::span<const double> samples_;
    std::vector<Block> blocks_;
};

}  // namespace welvane
