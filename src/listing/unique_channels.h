#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace welvane {

/// One distinct channel across the files of a listing.
struct UniqueChannel {
    std::string mnem, unit;
    std::size_t files = 0;  ///< lines of it that were met, one per file as a rule
    double footage = 0;     ///< its non-null length over all of them
};

/// The distinct channels in the order they were met; the same mnemonic with the same unit, case ignored, is one.
class UniqueChannels {
  public:
    void add(std::string_view mnem, std::string_view unit, double footage);
    const std::vector<UniqueChannel>& all() const { return channels_; }

  private:
    std::vector<UniqueChannel> channels_;
    std::unordered_map<std::string, std::size_t> places_;  ///< by upper-cased mnemonic and unit
};

}  // namespace welvane
