#include "picture/log_plot.h"

#include <algorithm>
#include <array>

#include "shared/failure.h"
#include "shared/numbers.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::size_t mostTracks = 10, mostCurves = 4, mostOthers = 3;

/// Finds channels by name and lays out their scales.
class Planner {
  public:
    Planner(const ReferenceTables& reference, const std::vector<PlotSource>& sources, const PlotWishes& wishes)
        : reference_(reference), sources_(sources), wishes_(wishes) {}

    LogPlot plan() {
        plot_.over = wishes_.layout == PlotLayout::Over && sources_.size() > 1;
        needNames();
        if (plot_.over) {
            std::vector<std::size_t> all;
            for (std::size_t source = 0; source < sources_.size(); ++source) all.push_back(source);
            addPanel(all);
        } else {
            for (std::size_t source = 0; source < sources_.size(); ++source) addPanel({source});
        }
        countBelowZero();
        return std::move(plot_);
    }

  private:
    const CurveValues& channelOf(const PlottedChannel& at) const { return sources_[at.source].channels[at.channel]; }

    /// The source's channel of this name; else the one that alone is of its curve group.
    std::optional<std::size_t> find(std::size_t source, const std::string& name) const {
        const std::vector<CurveValues>& channels = sources_[source].channels;
        for (std::size_t index = 0; index < channels.size(); ++index)
            if (sameText(trim(channels[index].mnem), name)) return index;
        const std::string group = curveGroup(reference_, name);
        std::optional<std::size_t> found;
        for (std::size_t index = 0; index < channels.size() && !group.empty(); ++index) {
            if (!sameText(curveGroup(reference_, std::string(trim(channels[index].mnem))), group)) continue;
            if (found) return std::nullopt;
            found = index;
        }
        return found;
    }

    void needName(const CurveChoice& choice) const {
        std::string there;
        for (std::size_t source = 0; source < sources_.size(); ++source) {
            if (find(source, choice.name)) return;
            for (const CurveValues& channel : sources_[source].channels)
                there += (there.empty() ? "" : ", ") + std::string(trim(channel.mnem));
        }
        throw RunTimeFailure("there is no channel " + choice.name +
                             (there.empty() ? ": there are none" : "; there are " + there));
    }
    void needNames() const {
        for (const std::vector<CurveChoice>& track : wishes_.tracks)
            for (const CurveChoice& choice : track) needName(choice);
        for (const CurveChoice& choice : wishes_.curves) needName(choice);
    }

    /// The curve of this name over the sources; without channels where none of them has it.
    PlottedCurve curveOf(const std::vector<std::size_t>& sources, const CurveChoice& choice) const {
        PlottedCurve curve;
        for (const std::size_t source : sources)
            if (const auto channel = find(source, choice.name)) curve.channels.push_back({source, *channel, {}});
        if (!curve.channels.empty()) settle(curve, choice);
        return curve;
    }

    /// Name, unit and scales of a curve whose channels are known.
    void settle(PlottedCurve& curve, const CurveChoice& choice) const {
        const CurveValues& first = channelOf(curve.channels.front());
        curve.mnem = trim(first.mnem);
        curve.unit = trim(first.unit);
        const std::vector<double> together = valuesOf(curve);
        const CurveValues values{first.mnem, first.unit, together.empty() ? first.values : together};
        const ScaleChoice usual = usualScale(reference_, values);
        curve.kind = usual.kind;
        curve.scale = chosenScale(usual.scale, values.values, choice);
        for (PlottedChannel& channel : curve.channels) channel.scale = scaleInUnit(curve, channel, choice);
    }

    /// Some values of all channels in the first one's unit; nothing where there is only one.
    std::vector<double> valuesOf(const PlottedCurve& curve) const {
        std::vector<double> all;
        if (curve.channels.size() < 2) return all;
        constexpr std::size_t enough = 32768;
        for (const PlottedChannel& at : curve.channels) {
            const CurveValues& channel = channelOf(at);
            if (!sameText(trim(channel.unit), curve.unit)) continue;
            const std::size_t stride = std::max<std::size_t>(1, channel.values.size() / enough);
            for (std::size_t index = 0; index < channel.values.size(); index += stride)
                all.push_back(channel.values[index]);
        }
        return all;
    }

    static Scale chosenScale(const Scale& usual, std::span<const double> values, const CurveChoice& choice) {
        const bool logarithmic = choice.logarithmic.value_or(usual.logarithmic && !belowZero(choice));
        if (choice.left) {
            const Scale scale{*choice.left, *choice.right, logarithmic};
            if (scale.left == scale.right)
                throw RunTimeFailure(choice.name + ": both ends of its scale are " + plainNumber(scale.left));
            if (logarithmic && scale.least() <= 0)
                throw RunTimeFailure(choice.name + ": a logarithmic scale lies above 0");
            return scale;
        }
        if (logarithmic == usual.logarithmic) return usual;
        return logarithmic ? decadeScale(values) : percentileScale(values);
    }
    /// A scale that was given without a kind, and cannot be logarithmic.
    static bool belowZero(const CurveChoice& choice) {
        return choice.left && std::min(*choice.left, *choice.right) <= 0;
    }

    /// The curve's scale in the unit of one of its channels; that channel's own where the units do not convert.
    Scale scaleInUnit(const PlottedCurve& curve, const PlottedChannel& at, const CurveChoice& choice) const {
        const CurveValues& channel = channelOf(at);
        const std::string unit(trim(channel.unit));
        if (sameText(unit, curve.unit)) return curve.scale;
        std::string group, firstGroup;
        unitGroupMembers(reference_, unit, &group);
        unitGroupMembers(reference_, curve.unit, &firstGroup);
        double offset = 0, firstOffset = 0;
        const double factor = unitFactor(reference_, unit, &offset) / unitFactor(reference_, curve.unit, &firstOffset);
        if (group.empty() || !sameText(group, firstGroup) || offset != firstOffset)
            return chosenScale(usualScale(reference_, channel).scale, channel.values, choice);
        return {curve.scale.left * factor, curve.scale.right * factor, curve.scale.logarithmic};
    }

    void addPanel(const std::vector<std::size_t>& sources) {
        PlottedPanel panel{sources, {}};
        if (wishes_.tracks.empty())
            arrange(customCurves(sources), panel);
        else
            for (const std::vector<CurveChoice>& choices : wishes_.tracks) addTrack(sources, choices, panel);
        plot_.panels.push_back(std::move(panel));
    }

    void addTrack(const std::vector<std::size_t>& sources, const std::vector<CurveChoice>& choices,
                  PlottedPanel& panel) const {
        PlottedTrack track;
        for (const CurveChoice& choice : choices)
            if (PlottedCurve curve = curveOf(sources, choice); !curve.channels.empty())
                track.push_back(std::move(curve));
        panel.tracks.push_back(std::move(track));
    }

    /// Whether the curves have all its channels, which answer to other names too, by their group.
    static bool isDrawn(const std::vector<PlottedCurve>& curves, const PlottedCurve& curve) {
        return std::ranges::all_of(curve.channels, [&](const PlottedChannel& at) {
            return std::ranges::any_of(curves, [&](const PlottedCurve& other) {
                return std::ranges::any_of(other.channels, [&](const PlottedChannel& drawn) {
                    return drawn.source == at.source && drawn.channel == at.channel;
                });
            });
        });
    }

    /// The curves to be laid out by custom: those that were named, or all.
    std::vector<PlottedCurve> customCurves(const std::vector<std::size_t>& sources) const {
        std::vector<PlottedCurve> curves;
        for (const CurveChoice& choice : wishes_.curves)
            if (PlottedCurve curve = curveOf(sources, choice); !isDrawn(curves, curve))
                curves.push_back(std::move(curve));
        if (!wishes_.curves.empty()) return curves;
        for (const std::size_t source : sources)
            for (std::size_t channel = 0; channel < sources_[source].channels.size(); ++channel)
                join(curves, {source, channel, {}});
        for (PlottedCurve& curve : curves) settle(curve, {});
        return curves;
    }

    /// Puts a channel to the curve that other sources have of the same name, else of the same group; or makes one of
    /// it.
    void join(std::vector<PlottedCurve>& curves, const PlottedChannel& at) const {
        const std::string mnem(trim(channelOf(at).mnem));
        const std::string group = curveGroup(reference_, mnem);
        PlottedCurve* partner = nullptr;
        for (PlottedCurve& curve : curves) {
            if (curve.channels.back().source == at.source) continue;
            const std::string other(trim(channelOf(curve.channels.front()).mnem));
            if (sameText(other, mnem)) partner = &curve;
            if (sameText(other, mnem)) break;
            if (partner == nullptr && !group.empty() && sameText(curveGroup(reference_, other), group))
                partner = &curve;
        }
        if (partner == nullptr)
            curves.push_back({.mnem = mnem, .unit = {}, .scale = {}, .channels = {at}});
        else
            partner->channels.push_back(at);
    }

    void arrange(std::vector<PlottedCurve> curves, PlottedPanel& panel) {
        for (const TrackKind kind : {TrackKind::Correlation, TrackKind::Resistivity, TrackKind::Porosity,
                                     TrackKind::Sonic, TrackKind::Other}) {
            const std::size_t firstOfKind = panel.tracks.size();
            for (PlottedCurve& curve : curves) {
                if (curve.kind != kind) continue;
                PlottedTrack* const track = trackFor(curve, firstOfKind, panel);
                if (track == nullptr)
                    leaveOut(curve);
                else
                    track->push_back(std::move(curve));
            }
        }
    }
    /// A track of the curve's kind with room, or a new one; nullptr where there are enough.
    static PlottedTrack* trackFor(const PlottedCurve& curve, std::size_t firstOfKind, PlottedPanel& panel) {
        const bool other = curve.kind == TrackKind::Other;
        for (std::size_t index = firstOfKind; index < panel.tracks.size(); ++index) {
            PlottedTrack& track = panel.tracks[index];
            const PlottedCurve& first = track.front();
            const bool suits = !other || (sameText(first.unit, curve.unit) && !curve.unit.empty() &&
                                          first.scale.logarithmic == curve.scale.logarithmic);
            if (suits && track.size() < (other ? mostOthers : mostCurves)) return &track;
        }
        if (panel.tracks.size() == mostTracks) return nullptr;
        return &panel.tracks.emplace_back();
    }
    void leaveOut(const PlottedCurve& curve) {
        for (const PlottedChannel& at : curve.channels)
            plot_.leftOut.push_back(std::string(trim(channelOf(at).mnem)) + " of " + sources_[at.source].name);
    }

    void countBelowZero() {
        for (const PlottedPanel& panel : plot_.panels)
            for (const PlottedTrack& track : panel.tracks)
                for (const PlottedCurve& curve : track)
                    for (const PlottedChannel& at : curve.channels) {
                        if (!at.scale.logarithmic) continue;
                        const auto values = channelOf(at).values;
                        const auto count =
                            std::count_if(values.begin(), values.end(), [](double value) { return value <= 0; });
                        if (count > 0)
                            plot_.belowZero.push_back({at.source, at.channel, static_cast<std::size_t>(count)});
                    }
    }

    const ReferenceTables& reference_;
    const std::vector<PlotSource>& sources_;
    const PlotWishes& wishes_;
    LogPlot plot_;
};

}  // namespace

CurveChoice readCurveChoice(std::string_view text) {
    std::vector<std::string> pieces = split(text, ':');
    for (std::string& piece : pieces) piece = trim(piece);
    CurveChoice choice{.name = pieces.front()};
    std::size_t next = 1;
    if (next < pieces.size() && (sameText(pieces[next], "log") || sameText(pieces[next], "lin")))
        choice.logarithmic = sameText(pieces[next++], "log");
    const std::size_t left = pieces.size() - next;
    const bool limits = left == 2 && isNumeric(pieces[next]) && isNumeric(pieces[next + 1]);
    if (choice.name.empty() || (left != 0 && !limits))
        throw RunTimeFailure("'" + std::string(trim(text)) + "' is not of the form CURVE[:log|lin][:LEFT:RIGHT]");
    if (limits) {
        choice.left = val(pieces[next]);
        choice.right = val(pieces[next + 1]);
    }
    return choice;
}

TrackChoices readTracks(std::string_view text) {
    TrackChoices tracks;
    for (const std::string& track : split(text, ';')) {
        tracks.emplace_back();
        for (const std::string& curve : split(track, ',')) tracks.back().push_back(readCurveChoice(curve));
    }
    return tracks;
}

LogPlot planPlot(const ReferenceTables& reference, const std::vector<PlotSource>& sources, const PlotWishes& wishes) {
    return Planner(reference, sources, wishes).plan();
}

}  // namespace welvane
