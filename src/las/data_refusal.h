#pragma once

#include <cstddef>
#include <string>

#include "shared/failure.h"

namespace welvane {

/// Data that cannot be read as they should be: the message begins with "line N: " where one line is the reason. What
/// would help is told beside it.
struct DataRefusal : RunTimeFailure {
    enum class Help { None, Loose, DecimalComma, IndexUnit };
    DataRefusal(std::size_t at, const std::string& why, Help what = Help::None)
        : RunTimeFailure((at == 0 ? std::string() : "line " + std::to_string(at) + ": ") + why), line(at), help(what) {}
    std::size_t line;  ///< from 1; 0 where no line is the reason
    Help help;
};

}  // namespace welvane
