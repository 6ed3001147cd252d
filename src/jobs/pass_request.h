#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "jobs/given_number.h"
#include "session/choices.h"
#include "session/tvd.h"
#include "shared/figure_rules.h"

/// What a file made by a pass shall be. Each member that is not set leaves what the inputs, the filter and the settings
/// say. Slots count from 0.
namespace welvane {

/// A depth, or a limit for it such as ">=1000", as the property holds it.
class DepthLimit {
  public:
    DepthLimit(const GivenNumber& depth) : text_(depth.text()) {}
    /// A number, with "<", ">", "=", "<=" or ">=" in front of it or alone; nothing for another text.
    static std::optional<DepthLimit> read(std::string_view text);
    const std::string& text() const { return text_; }
    bool operator==(const DepthLimit&) const = default;

  private:
    explicit DepthLimit(std::string_view text) : text_(text) {}
    std::string text_;
};

struct DepthPair {
    GivenNumber from, to;
    bool operator==(const DepthPair&) const = default;
};

/// Feeds an output column from an input channel: over an interval, or where nothing else feeds it.
struct ChannelLink {
    int slot = 0;
    std::string channel;  ///< by mnemonic, or by number from 1
    std::string column;   ///< the same, or "new" for one more
    std::optional<DepthPair> depths{};
    bool operator==(const ChannelLink&) const = default;
};
/// Depths from which an input feeds all its channels.
struct InputDepths {
    int slot = 0;
    DepthPair depths;
    bool operator==(const InputDepths&) const = default;
};
/// Moves an input channel in depth, positive down.
struct ChannelShift {
    int slot = 0;
    std::string channel;
    double offset = 0;
    bool operator==(const ChannelShift&) const = default;
};
/// Cuts an input channel to an interval.
struct ChannelClip {
    int slot = 0;
    std::string channel;
    GivenNumber top, bottom;
    bool operator==(const ChannelClip&) const = default;
};

struct PassRequest {
    std::optional<DepthLimit> from{}, to{};
    std::string step{};                   ///< a number in the output's unit, or an item of the property's list
    std::optional<DepthUnit> unit{};      ///< from, to and offset count in the input's all the same
    std::optional<GivenNumber> offset{};  ///< added to every depth written
    std::optional<Direction> direction{};
    std::optional<NullFill> fill{};
    std::string tvd{};                    ///< survey by which true vertical depths are written
    std::optional<SurveyUnit> tvdUnit{};  ///< of a survey that names none; without it that of the first input's index

    bool splice = false;                ///< join channels of the inputs that belong together
    std::vector<std::string> select{};  ///< keep these output channels, in this order
    std::string filter{};               ///< filter file
    std::vector<std::string> curves{};  ///< lines as in the ~Curve section of a filter
    std::vector<ChannelLink> links{};
    std::vector<InputDepths> applyDepths{};
    std::vector<ChannelShift> shifts{};
    std::vector<ChannelClip> clips{};

    std::optional<Wrap> wrap{};
    std::optional<LasVersion> version{};
    std::optional<GivenNumber> null{};
    /// Columns of dot, value and colon, further indent of ~Well lines, width and decimals of data.
    std::array<std::optional<GivenNumber>, 6> format{};
    std::string header{};    ///< the input whose header is taken: its path, or its number from 1
    std::string sections{};  ///< letters of V, W, C, P, O, in order; the others are left out
    std::optional<bool> mergeParameters{}, renameDuplicates{};
    std::optional<TitleStyle> plain{};     ///< a plain table with these heads, no LAS file
    std::optional<Separator> separator{};  ///< between its fields
    bool csv = false;                      ///< the channels as comma-separated values (RFC 4180), no LAS file
    bool fillEmpty = false, keepDetails = false, smooth = false;

    std::optional<GivenNumber> columnWidth{};  ///< data columns of this width, in place of blanks between them
    bool loose = false;                        ///< read data of no regular shape line by line
    bool decimalComma = false;                 ///< "123,42" is a number
    std::string indexUnit{};                   ///< unit of the inputs' index, "" for what their headers say
    FigureRules rules = FigureRules::trueFigures;
    bool operator==(const PassRequest&) const = default;
};

}  // namespace welvane
