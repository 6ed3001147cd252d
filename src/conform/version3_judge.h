#pragma once

#include "conform/judgement.h"

namespace welvane {

/// Judges a file of LAS 3.0: its sections, the lines of ~Version and ~Well, and whether rows fit their definitions. The
/// values of its data sets are not looked at.
void judgeVersion3(std::string_view text, const JudgeOptions& options, Judgement& judged);

}  // namespace welvane
