#include "cli/standard_streams.h"

#include <array>
#include <filesystem>
#include <iostream>

#include "platform/mapped_file.h"
#include "platform/output_file.h"
#include "shared/files.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view streamName = "-";

/// What a stream may bring before its first section, longer than any comment at the head of a file. A program that
/// prints without end would else fill the disk before anybody is told.
constexpr std::size_t sectionLimit = std::size_t{16} << 20;

/// Refuses a stream that is no LAS text as soon as that can be known. `block` is what came behind `before` bytes.
void needLasText(std::string_view block, std::size_t before, bool& sectionSeen) {
    const bool twoByteUnits = block.starts_with("\xFF\xFE") || block.starts_with("\xFE\xFF");
    if (const std::size_t place = block.find('\0'); before == 0 && !twoByteUnits && place != std::string_view::npos)
        throw Refusal(std::string(streamName), "not a text file: byte " + std::to_string(place + 1) + " is NUL");
    sectionSeen = sectionSeen || holdsText(block, "~");
    if (!sectionSeen && before + block.size() >= sectionLimit)
        throw Refusal(std::string(streamName), "no section within 16 MiB: no LAS file");
}

/// Copies the standard input to a file, to its end or until a person stops it.
void spool(Console& console, const std::string& path, bool anyBytes) {
    OutputFile file(path, OutputFile::Mode::Beside);
    std::array<char, 1 << 16> block{};
    bool sectionSeen = false;
    for (std::size_t copied = 0; std::cin.read(block.data(), block.size()) || std::cin.gcount() > 0;) {
        const std::string_view bytes(block.data(), static_cast<std::size_t>(std::cin.gcount()));
        if (!anyBytes) needLasText(bytes, copied, sectionSeen);
        file.write(bytes);
        copied += bytes.size();
        if (console.stopped()) throw Refusal(std::string(streamName), "stopped");
    }
    file.commit();
}

}  // namespace

StandardStreams::StandardStreams(Console& console, const VerbOptions& options) : console_(console) {
    for (const VerbOption& row : options) {
        const bool isPlace = !row.names.starts_with("-"), isOutput = holdsText(std::string(row.names), "--output");
        if (!isPlace && !isOutput) continue;
        if (auto* const text = std::get_if<std::string*>(&row.place); text != nullptr && **text == streamName) {
            if (isPlace)
                takeInput(**text, row.rules.anyBytes);
            else
                takeOutput(**text);
        }
        if (auto* const list = std::get_if<std::vector<std::string>*>(&row.place))
            for (std::string& name : **list)
                if (name == streamName) takeInput(name, row.rules.anyBytes);
    }
}

std::string StandardStreams::scratch(const std::string& name) {
    return console_.platform().scratchFolder() + name;
}

void StandardStreams::takeInput(std::string& name, bool anyBytes) {
    if (!input_.empty()) throw UsageFault("'-' is named twice; there is one standard input");
    name = input_ = scratch("stdin.las");
    console_.showAs(input_, std::string(streamName));
    spool(console_, input_, anyBytes);
}

void StandardStreams::takeOutput(std::string& name) {
    if (console_.options().json) throw UsageFault("--json and '-o -' both print on the standard output");
    name = output_ = scratch("stdout.las");
    console_.showAs(output_, std::string(streamName));
}

void StandardStreams::pour() {
    if (output_.empty() || !fileExists(output_)) return;
    if (const auto file = MappedFile::open(output_)) console_.print(file->bytes());
}

}  // namespace welvane
