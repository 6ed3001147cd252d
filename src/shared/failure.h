#pragma once

#include <algorithm>
#include <exception>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// Failures at run time, and the rule "the failing statement is dropped, the next one runs".
namespace welvane {

/// A bad conversion, an overflow of a 16- or 32-bit quantity, an index out of bounds, a file error.
class RunTimeFailure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
    /// A text that quotes bytes of a file may hold NUL, which would end it for everyone who asks what().
    explicit RunTimeFailure(const std::string& text) : std::runtime_error(withoutNul(text)) {}

    static std::string withoutNul(std::string text) {
        std::replace(text.begin(), text.end(), '\0', '?');
        return text;
    }
};

/// A file that cannot be opened, read, written or renamed: which, and the system's reason. Its text is "PATH: reason".
class FileFailure : public RunTimeFailure {
  public:
    FileFailure(const std::string& path, std::string reason)
        : RunTimeFailure(path + ": " + reason), reason_(std::move(reason)) {}
    const std::string& reason() const { return reason_; }

  private:
    std::string reason_;
};

/// One step that was dropped: which, and why.
struct SkippedStep {
    std::string what;
    std::string why;
};

/// What a pass skipped. Keeps the first `kept` and counts them all, so that bad data cannot fill memory.
struct FailureList {
    static constexpr std::size_t kept = 100;
    std::vector<SkippedStep> first;
    std::size_t count = 0;

    void add(std::string what, std::string why) {
        ++count;
        if (first.size() < kept) first.push_back({std::move(what), std::move(why)});
    }
};

/// Runs one step; a failure drops the rest of that step only and is noted. False when it was dropped.
/// Wrap the smallest thing that can be dropped (a sample, a line), never a section.
template <class Body>
bool attempt(FailureList& failures, const char* what, Body&& body) {
    try {
        std::forward<Body>(body)();
        return true;
    } catch (const std::exception& error) {
        failures.add(what, error.what());
        return false;
    }
}

}  // namespace welvane
