#include "texttools/search_replace.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "platform/mapped_file.h"
#include "shared/failure.h"
#include "shared/text.h"

namespace welvane {

namespace {

constexpr std::string_view statusText = "Doing Search and Replace. Please Wait...";
/// Bytes worked on between two looks at cancelRequested; small enough to stay in the processor's cache.
constexpr std::size_t workBlock = std::size_t{256} << 10;
/// A single byte found more often than once in so many bytes is replaced without branches.
constexpr std::size_t denseGap = 24;
/// Longest replacement of the road without branches.
constexpr std::size_t shortReplacement = 8;

char lowerChar(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// First byte in [from, to) that is one of the two forms of a letter; `to` when there is none. Keeps the place of
/// either form, so that one which is rare is not searched for again at each call.
class LetterFinder {
  public:
    explicit LetterFinder(char letter) : forms_{upperChar(letter), lowerChar(letter)} {}

    /// Starts a new stretch of bytes that ends at `to`.
    void start(const char* to) {
        end_ = to;
        next_ = {nullptr, nullptr};
    }
    const char* find(const char* from) {
        const char* best = find(from, 0);
        if (forms_[0] != forms_[1]) best = std::min(best, find(from, 1));
        return best;
    }

  private:
    const char* find(const char* from, std::size_t form) {
        if (next_[form] == nullptr || next_[form] < from) {
            const void* place =
                from < end_ ? std::memchr(from, forms_[form], static_cast<std::size_t>(end_ - from)) : nullptr;
            next_[form] = place == nullptr ? end_ : static_cast<const char*>(place);
        }
        return next_[form];
    }
    std::array<char, 2> forms_;
    std::array<const char*, 2> next_{};
    const char* end_ = nullptr;
};

/// One search of one byte.
class ByteReplacer {
  public:
    ByteReplacer(char searched, std::string_view replacement)
        : upper_(upperChar(searched)), lower_(lowerChar(searched)), replacement_(replacement) {}

    /// Replaces in [from, to); returns the number of occurrences.
    std::size_t block(const char* from, const char* to, OutputFile& output) const {
        const std::size_t size = static_cast<std::size_t>(to - from);
        const std::size_t found = count(from, size);
        if (found == 0) {
            output.write({from, size});
        } else if (replacement_.size() == 1) {
            translate(from, output.reserve(size), size);
            output.advance(size);
        } else if (found * denseGap > size && replacement_.size() <= shortReplacement) {
            denseBlock(from, size, output);
        } else {
            sparseBlock(from, to, output);
        }
        return found;
    }

  private:
    // The loops take copies of the members, which a write through a char pointer could otherwise change.
    std::size_t count(const char* from, std::size_t size) const {
        const char one = upper_, other = lower_;
        std::size_t found = 0;
        for (std::size_t index = 0; index < size; ++index)
            found += static_cast<std::size_t>((from[index] == one) | (from[index] == other));
        return found;
    }

    void translate(const char* from, char* target, std::size_t size) const {
        const char one = upper_, other = lower_, given = replacement_[0];
        for (std::size_t index = 0; index < size; ++index) {
            const char c = from[index];
            target[index] = (c == one) | (c == other) ? given : c;
        }
    }

    /// Each byte is written as eight bytes of which the next overwrites what does not count.
    void denseBlock(const char* from, std::size_t size, OutputFile& output) const {
        const char one = upper_, other = lower_;
        const std::size_t step = replacement_.size();
        std::array<char, shortReplacement> given{};
        std::copy(replacement_.begin(), replacement_.end(), given.begin());
        char* const start = output.reserve(size * std::max<std::size_t>(1, replacement_.size()) + shortReplacement);
        char* target = start;
        for (std::size_t index = 0; index < size; ++index) {
            const char c = from[index];
            const bool hit = (c == one) | (c == other);
            std::memcpy(target, given.data(), shortReplacement);
            *target = hit ? given[0] : c;
            target += hit ? step : 1;
        }
        output.advance(static_cast<std::size_t>(target - start));
    }

    void sparseBlock(const char* from, const char* to, OutputFile& output) const {
        LetterFinder finder(upper_);
        finder.start(to);
        for (const char* place = finder.find(from); place < to; place = finder.find(from)) {
            output.write({from, static_cast<std::size_t>(place - from)});
            output.write(replacement_);
            from = place + 1;
        }
        output.write({from, static_cast<std::size_t>(to - from)});
    }

    char upper_, lower_;
    std::string_view replacement_;
};

/// One search of any length by the method of Knuth, Morris and Pratt: linear whatever the texts are. The number of
/// bytes matched so far lives on from block to block.
class TextReplacer {
  public:
    TextReplacer(std::string_view searched, std::string_view replacement)
        : searched_(upper(searched)),
          replacement_(replacement),
          fallback_(searched_.size()),
          finder_(searched_.front()) {
        std::size_t length = 0;
        for (std::size_t index = 1; index < searched_.size(); ++index) {
            while (length > 0 && searched_[index] != searched_[length]) length = fallback_[length - 1];
            if (searched_[index] == searched_[length]) ++length;
            fallback_[index] = length;
        }
    }

    /// Replaces in [from, to), which follows the block before it in memory; bytes that may begin an occurrence wait for
    /// the next block.
    std::size_t block(const char* from, const char* to, OutputFile& output) {
        const char* kept = from - matched_;
        std::size_t found = 0;
        finder_.start(to);
        for (const char* place = from; place < to; ++place) {
            if (matched_ == 0) {
                place = finder_.find(place);
                if (place == to) break;
            }
            const char c = upperChar(*place);
            while (matched_ > 0 && searched_[matched_] != c) matched_ = fallback_[matched_ - 1];
            if (searched_[matched_] == c) ++matched_;
            if (matched_ < searched_.size()) continue;
            const char* const start = place + 1 - searched_.size();
            output.write({kept, static_cast<std::size_t>(start - kept)});
            output.write(replacement_);
            kept = place + 1;
            matched_ = 0;
            ++found;
        }
        output.write({kept, static_cast<std::size_t>(to - kept) - matched_});
        return found;
    }
    /// Bytes that wait at the end of the last block.
    std::size_t waiting() const { return matched_; }

  private:
    std::string searched_;
    std::string_view replacement_;
    std::vector<std::size_t> fallback_;
    LetterFinder finder_;
    std::size_t matched_ = 0;
};

/// Hands the bytes block by block to `work`, telling the progress; false when cancelled.
template <class Work>
bool forEachBlock(App& app, std::string_view bytes, Work work) {
    for (std::size_t from = 0; from < bytes.size(); from += workBlock) {
        if (app.run.cancelRequested) return false;
        const std::size_t size = std::min(workBlock, bytes.size() - from);
        work(bytes.data() + from, bytes.data() + from + size);
        app.run.progressFraction =
            static_cast<float>(static_cast<double>(from + size) / static_cast<double>(bytes.size()));
        app.user.progress({statusText, static_cast<double>(app.run.progressFraction)});
        if (!app.run.commandMode) app.user.pumpEvents();
    }
    return !app.run.cancelRequested;
}

bool replaceInto(App& app, std::string_view bytes, std::string_view search, std::string_view replacement,
                 OutputFile& output, std::uint64_t& found) {
    if (search.empty())
        return forEachBlock(app, bytes, [&](const char* from, const char* to) {
            output.write({from, static_cast<std::size_t>(to - from)});
        });
    if (search.size() == 1) {
        const ByteReplacer replacer(search.front(), replacement);
        return forEachBlock(app, bytes,
                            [&](const char* from, const char* to) { found += replacer.block(from, to, output); });
    }
    TextReplacer replacer(search, replacement);
    if (!forEachBlock(app, bytes, [&](const char* from, const char* to) { found += replacer.block(from, to, output); }))
        return false;
    output.write(bytes.substr(bytes.size() - replacer.waiting()));
    return true;
}

}  // namespace

SearchReplaceResult searchReplaceFile(App& app, std::string_view sourcePath, std::string_view targetPath,
                                      std::string_view searchBytes, std::string_view replaceBytes,
                                      OutputFile::Mode mode) {
    SearchReplaceResult result;
    app.run.statusText = std::string(statusText);
    try {
        const auto source = MappedFile::open(sourcePath, &result.why);
        if (!source) return result;
        source->willReadAll();
        OutputFile target(targetPath, mode);
        if (!replaceInto(app, source->bytes(), searchBytes, replaceBytes, target, result.replacements)) {
            result.cancelled = true;
            return result;
        }
        if (source->damaged()) {
            result.why = "the file could not be read to its end";
            return result;
        }
        target.commit();
        result.done = true;
    } catch (const std::exception& error) {
        result.why = error.what();
    }
    return result;
}

}  // namespace welvane
