#include "models/byte_place.h"

#include "platform/mapped_file.h"

namespace welvane {

namespace {

/// Offset of the begin of a line, from 1; 0 where there is none.
std::size_t beginOfLine(std::string_view bytes, std::size_t line) {
    std::size_t begin = 0;
    for (std::size_t number = 1; number < line; ++number) {
        const std::size_t end = bytes.find_first_of("\r\n", begin);
        if (end == std::string_view::npos) return 0;
        begin = end + (bytes.substr(end, 2) == "\r\n" ? 2 : 1);
    }
    return begin < bytes.size() ? begin : 0;
}

}  // namespace

bool showLineOfFile(ByteViewState& view, const std::string& path, std::size_t line) {
    std::size_t begin = 0;
    {
        const auto file = MappedFile::open(path);
        if (!file) return false;
        begin = beginOfLine(file->bytes(), line);
    }
    return openByteView(view, path) && (begin == 0 || showPage(view, begin));
}

}  // namespace welvane
