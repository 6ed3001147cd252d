#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "shared/text.h"

/// What the pick lists of prd offer: a type for each list, and the texts that stand for it in the cells.
namespace welvane {

enum class DepthUnit { F, M, Ft };
enum class Direction { DeepToShallow, ShallowToDeep };
enum class Wrap { No, Yes };
enum class LasVersion { V1_2, V2_0 };
/// How gaps of null are closed.
enum class NullFill : std::int16_t { Linear = 0, FlatTop = 1, None = 2 };
/// How the words of a data line are parted.
enum class Parsing { Auto, ColumnWidth };
enum class Divide { None, ByDepth, ByCurve };
/// Heads of a plain table.
enum class TitleStyle { NoHeader, Mnem, MnemUnit, OneLineEach };
/// What stands between the fields of a plain table.
enum class Separator { Space, Tab, Comma };
/// What puts a depth beside From and To.
enum class DepthPick { Min, Max, Fit };

/// One item of a pick list: what it means, and the text that a cell holds.
template <class Choice>
struct ListItem {
    Choice choice;
    std::string_view text;
};

/// Items of the pick list of a choice, in the order in which it is offered.
template <class Choice>
struct PickList;
template <>
struct PickList<DepthUnit> {
    static constexpr ListItem<DepthUnit> items[] = {{DepthUnit::F, "F"}, {DepthUnit::M, "M"}, {DepthUnit::Ft, "FT"}};
};
template <>
struct PickList<Direction> {
    static constexpr ListItem<Direction> items[] = {{Direction::DeepToShallow, "Deep to Shallow"},
                                                    {Direction::ShallowToDeep, "Shallow to Deep"}};
};
template <>
struct PickList<Wrap> {
    static constexpr ListItem<Wrap> items[] = {{Wrap::No, "No"}, {Wrap::Yes, "Yes"}};
};
template <>
struct PickList<LasVersion> {
    static constexpr ListItem<LasVersion> items[] = {{LasVersion::V1_2, "1.2"}, {LasVersion::V2_0, "2.0"}};
};
template <>
struct PickList<NullFill> {
    static constexpr ListItem<NullFill> items[] = {
        {NullFill::None, "None"}, {NullFill::Linear, "Linear"}, {NullFill::FlatTop, "Flat Top"}};
};
template <>
struct PickList<Parsing> {
    static constexpr ListItem<Parsing> items[] = {{Parsing::Auto, "Auto (preferred)"},
                                                  {Parsing::ColumnWidth, "Column width of:"}};
};
template <>
struct PickList<Divide> {
    static constexpr ListItem<Divide> items[] = {
        {Divide::None, "None"}, {Divide::ByDepth, "By Depth"}, {Divide::ByCurve, "By Curve"}};
};
template <>
struct PickList<TitleStyle> {
    static constexpr ListItem<TitleStyle> items[] = {{TitleStyle::NoHeader, "No Header"},
                                                     {TitleStyle::Mnem, "MNEM"},
                                                     {TitleStyle::MnemUnit, "MNEM.UNIT"},
                                                     {TitleStyle::OneLineEach, "One line each"}};
};
template <>
struct PickList<Separator> {
    static constexpr ListItem<Separator> items[] = {
        {Separator::Space, "Space"}, {Separator::Tab, "Tab"}, {Separator::Comma, "Comma"}};
};
template <>
struct PickList<DepthPick> {
    static constexpr ListItem<DepthPick> items[] = {
        {DepthPick::Min, "Min"}, {DepthPick::Max, "Max"}, {DepthPick::Fit, "Fit"}};
};

/// The text that a cell holds for a choice.
template <class Choice>
constexpr std::string_view textOf(Choice choice) {
    for (const auto& item : PickList<Choice>::items)
        if (item.choice == choice) return item.text;
    return {};
}

/// The choice that a cell's text means, case ignored; nothing where its list does not hold the text.
template <class Choice>
std::optional<Choice> decode(std::string_view text) {
    for (const auto& item : PickList<Choice>::items)
        if (sameText(item.text, text)) return item.choice;
    return std::nullopt;
}

/// True for the units that count in feet.
bool isFeet(std::string_view depthUnit);
/// The version that a VERS value means; nothing for a version that has no item.
std::optional<LasVersion> versionOf(double vers);

/// The items of a choice joined by "|".
template <class Choice>
std::string listOf() {
    std::string list;
    for (const auto& item : PickList<Choice>::items) list.append(list.empty() ? "" : "|").append(item.text);
    return list;
}

}  // namespace welvane
