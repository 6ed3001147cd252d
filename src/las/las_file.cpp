#include "las/las_file.h"

namespace welvane {

LasFile::LasFile(std::string_view path, FigureRules rules)
    : path_(path),
      rules_(rules),
      file_(mapFile(path_)),
      encoding_(rules == FigureRules::trueFigures ? encodingOf(file_.bytes()) : TextEncoding::Plain),
      converted_(isUtf16(encoding_) ? utf8Of(file_.bytes(), encoding_) : std::string()),
      text_(isUtf16(encoding_) ? std::string_view(converted_) : withoutMark(file_.bytes(), encoding_),
            rules == FigureRules::trueFigures ? LineRule::Any : LineRule::CarriageReturn) {}

bool LasFile::unchanged() const {
    return identifyFile(path_) == identity();
}

void LasFile::needWhole() const {
    welvane::needWhole(file_, path_);
}

const DataShape& LasFile::shape() const {
    std::call_once(shapeKnown_, [this] { shape_ = detectDataLayout(text_); });
    return shape_;
}

const DataEnds& LasFile::ends() const {
    std::call_once(endsKnown_, [this] { ends_ = locateDataEnds(text_, shape()); });
    return ends_;
}

LasFilePointer openLasFile(std::string_view path, FigureRules rules) {
    return std::make_shared<const LasFile>(path, rules);
}

}  // namespace welvane
