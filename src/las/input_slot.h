#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "las/header_line.h"

namespace welvane {

class LasFile;
struct InputData;

/// One of the four input files as the session knows it. Free when its path is empty. Depths are in the file's own unit.
struct InputSlot {
    double start = 0, stop = 0, step = 0;  ///< STRT, STOP, STEP of ~Well
    double firstDepth = 0, lastDepth = 0;  ///< of the first and last sample as found in ~A
    double topDepth = 0, bottomDepth = 0;  ///< the smaller and the larger of start and stop
    std::string nullText;                  ///< VALUE of NULL
    std::string depthUnit;                 ///< UNIT of the STOP line
    std::string lasVersion;                ///< VALUE of VERS
    std::string wrap;                      ///< "NO" or "YES", by the shape of the data; "" undecided
    std::int16_t linesPerStep = 0;         ///< text lines per depth step
    std::int32_t bytesPerStep = 0;         ///< bytes per depth step, line ends included
    std::int32_t wordsPerStep = 0;         ///< numbers per depth step
    std::int64_t dataStart = 0;            ///< file position (1-based) of the first line of ~A
    std::int64_t lastLine = 0;             ///< file position (1-based) of the last sample's line
    std::string indexName;                 ///< "DEPT"
    std::string path;
    std::shared_ptr<const LasFile> file;  ///< what was opened under the path; all reading goes there
    /// What stands behind its ~A, by FigureRules::trueFigures; as laid down each pass reads it itself.
    std::shared_ptr<const InputData> data;
    std::int16_t firstColumnWidth = 0, firstColumnDecimals = 0;    ///< of the first data column
    std::int16_t dotColumn = 0, valueColumn = 0, colonColumn = 0;  ///< 0 read from the file becomes 7, 15, 50
};

/// One ~Curve line of a slot. Element 0 of a slot's array is the index line; field n+1 of a data line feeds channel n.
struct SlotChannel {
    HeaderField field;
    float scale = 1.0F;
    float offset = 0.0F;
    bool spliced = false;                ///< set by matching, a hand-made shift or a clip: clip and offset act on it
    std::int16_t channelDataColumn = 0;  ///< its column in the input matrix
    float channelOffset = 0.0F;          ///< depth shift in the file's unit, positive moves down
    float channelTop = 0.0F;             ///< clip limits in the file's unit, 0 means not set
    float channelBottom = 0.0F;
};
using SlotChannels = std::vector<SlotChannel>;

}  // namespace welvane
