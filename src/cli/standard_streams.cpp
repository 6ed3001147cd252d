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

/// Copies the standard input to a file, to its end or until a person stops it.
void spool(Console& console, const std::string& path) {
    OutputFile file(path, OutputFile::Mode::Beside);
    std::array<char, 1 << 16> block{};
    while (std::cin.read(block.data(), block.size()) || std::cin.gcount() > 0) {
        file.write({block.data(), static_cast<std::size_t>(std::cin.gcount())});
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
                takeInput(**text);
            else
                takeOutput(**text);
        }
        if (auto* const list = std::get_if<std::vector<std::string>*>(&row.place))
            for (std::string& name : **list)
                if (name == streamName) takeInput(name);
    }
}

std::string StandardStreams::scratch(const std::string& name) {
    return console_.platform().scratchFolder() + name;
}

void StandardStreams::takeInput(std::string& name) {
    if (!input_.empty()) throw UsageFault("'-' is named twice; there is one standard input");
    name = input_ = scratch("stdin.las");
    console_.showAs(input_, std::string(streamName));
    spool(console_, input_);
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
