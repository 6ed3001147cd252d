#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The log that the external checker leaves, and how it is judged: by two keywords, and by being there at all.
namespace welvane {

/// A log longer than this is cut; its later lines are kept only where they hold a keyword, and these up to a quarter of
/// it.
inline constexpr std::size_t longestLog = std::size_t{4} << 20;

/// A file's text in one string; "" when it cannot be read. Of a text beyond longestLog: its beginning, a line that
/// tells how much was left out, and the lines behind it that hold a keyword, so that a checker which floods its log
/// changes no verdict and fills no memory.
std::string readWholeFile(std::string_view path);

/// True when the text holds "Failed:" or "Error:", case ignored.
bool holdsFailure(std::string_view text);
/// The lines (ended by CR LF, CR or LF) that hold one of the two words.
std::vector<std::string> failureLines(std::string_view text);

enum class Verdict { CheckIncomplete, Failed, Passed };
/// An empty log means that the check did not finish.
Verdict verdictOf(std::string_view logText);
/// "Check Incomplete", "Failed", "Passed".
std::string_view verdictText(Verdict verdict);

inline constexpr std::uint32_t failedColour = 255;
inline constexpr std::uint32_t passedColour = 65280;
inline constexpr std::uint32_t whiteColour = 0xFFFFFF;
std::uint32_t verdictColour(Verdict verdict);

}  // namespace welvane
