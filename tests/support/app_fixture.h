#pragma once

#include <gtest/gtest.h>
#include <string>

#include "session/session.h"
#include "support/memory_platform.h"
#include "support/scripted_interface.h"
#include "support/temp_folder.h"

namespace welvane::test {

/// A process in memory, the person in front of it, and a folder for its files.
class AppTest : public ::testing::Test {
  protected:
    AppTest() : app(user, platform) {}
    /// Title and text of a box that was shown; the last one without a number.
    std::string box(std::size_t number) const {
        return user.asked().at(number).title + ": " + user.asked()[number].text;
    }
    std::string box() const { return box(user.asked().size() - 1); }

    TempFolder folder;
    MemoryPlatform platform;
    ScriptedInterface user;
    App app;
};

}  // namespace welvane::test
