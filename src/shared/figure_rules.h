#pragma once

/// Which of the two rules for figures a routine follows.
namespace welvane {

enum class FigureRules {
    asLaidDown,  ///< the headless line, bit for bit as it always was
    trueFigures  ///< the verbs, windows and modules: every figure written is the figure that was there, or a note tells
};

}  // namespace welvane
