#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "las/data_shape.h"
#include "las/las_text.h"
#include "las/line_ends.h"
#include "las/sections.h"
#include "las/text_encoding.h"
#include "platform/mapped_file.h"
#include "shared/figure_rules.h"

namespace welvane {

/// A LAS file, opened, mapped and its sections indexed once, for everyone who asks: whoever holds one reads the file
/// that was opened, also when its name has come to mean another one. All questions can be asked by many threads at
/// once.
class LasFile {
  public:
    /// FileFailure where the file cannot be opened. By FigureRules::trueFigures its lines may end in CR LF, LF or CR, a
    /// byte order mark is passed over, and UTF-16 is read through a copy in UTF-8; as laid down a lone LF ends no line
    /// and every byte counts.
    explicit LasFile(std::string_view path, FigureRules rules = FigureRules::asLaidDown);
    LasFile(const LasFile&) = delete;
    LasFile& operator=(const LasFile&) = delete;

    const std::string& path() const { return path_; }
    FigureRules rules() const { return rules_; }
    const LasText& text() const { return text_; }
    /// The text that all places count in.
    std::string_view bytes() const { return text_.bytes(); }
    TextEncoding encoding() const { return encoding_; }
    /// What the file was when it was opened.
    const FileIdentity& identity() const { return file_.identity(); }
    /// True while the path names that file and nobody has written to it.
    bool unchanged() const;
    /// True once a part of the file could not be read.
    bool damaged() const { return file_.damaged(); }
    /// FileFailure once a part of the file could not be read, or the path no longer names the file as it was opened:
    /// what was found in it since may be wrong.
    void needWhole() const;
    /// Tells the system that the bytes will be read from front to end.
    void willReadAll() const { file_.willReadAll(); }

    /// As readSection, getSectionText, getFileValue, getLasValue and getDepthHeader.
    std::optional<SectionTable> section(char letter, const SectionReading& how = {}) const {
        return readSection(text_, letter, how);
    }
    std::string sectionText(char letter) const { return getSectionText(text_, letter); }
    LasValue value(std::string_view mnem) const { return getFileValue(text_, mnem); }
    LasValue value(std::string_view mnem, char section) const { return getLasValue(text_, mnem, section); }
    DepthHeader depthHeader() const { return getDepthHeader(text_); }
    /// As detectDataLayout and locateDataEnds; looked for at the first question.
    const DataShape& shape() const;
    const DataEnds& ends() const;
    /// Judged by the first and last bytes.
    LineEnds lineEnds() const { return lineEndsOf(bytes()); }

  private:
    std::string path_;
    FigureRules rules_;
    MappedFile file_;
    TextEncoding encoding_;
    std::string converted_;  ///< the text of a file in UTF-16
    LasText text_;
    mutable std::once_flag shapeKnown_, endsKnown_;
    mutable DataShape shape_;
    mutable DataEnds ends_;
};

using LasFilePointer = std::shared_ptr<const LasFile>;

/// The file opened; FileFailure where that cannot be done.
LasFilePointer openLasFile(std::string_view path, FigureRules rules = FigureRules::asLaidDown);

}  // namespace welvane
