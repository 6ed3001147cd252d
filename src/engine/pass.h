#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/pass_context.h"

/// The pass: turns one loaded session into one output file.
namespace welvane {

/// The heart of the program. Fills context.report; the result stands there too. A run that stops early leaves the file
/// as far as it was written (written beside: leaves the old file).
PassResult doitmastnew(PassContext& context);

/// What a pass would write, as values.
struct PassPreview {
    std::string header;                        ///< all in front of the data, as text
    std::vector<std::vector<double>> columns;  ///< as writtenRecords gives them
};
/// The same without a file: the samples with the decimals that they would be written with. For rules as laid down and
/// for depths that are true vertical ones, whose second pass reads the first one's file, it tells the first pass alone.
PassResult previewPass(PassContext& context, PassPreview& preview);

/// What a pass would do, without doing it.
struct PassPlan {
    std::string refusal;  ///< "" when the pass could run
    PassGrid grid;
    struct Channel {
        std::string mnem, unit, sources;  ///< sources: "slot 1 GR 1000 to 1200, ..."
        std::string function;             ///< "" when none
    };
    std::vector<Channel> channels;
    std::string whyInMemory;         ///< "" for one that is streamed
    std::uint64_t memoryNeeded = 0;  ///< bytes of the two matrices, where they are held
};
PassPlan planPass(App& app, Session& session, FigureRules rules);

}  // namespace welvane
