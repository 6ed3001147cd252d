#pragma once

#include <functional>
#include <string_view>

#include "conform/judgement.h"
#include "conform/text_sink.h"

/// A file written anew with all mended that needs no choice of a person. What is told by the judgement decides: the
/// same text, judged again, breaks those rules no more.
namespace welvane {

/// True where there is anything to mend.
bool canMend(const Judgement& judged);
/// Writes `bytes`, of which `judged` tells, mended to `sink`. A header is held in memory, data are not. False when
/// `stopped` said so on the way: what was written is not whole. RunTimeFailure for a header longer than any is.
bool mendText(std::string_view bytes, const Judgement& judged, const TextSink& sink,
              const std::function<bool()>& stopped);

}  // namespace welvane
