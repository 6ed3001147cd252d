#pragma once

#include <string>

#include "jobs/table_changes.h"
#include "session/session.h"

/// What of a session stands in its file beside its inputs: tables, texts, channels, survey, and the settings that a run
/// reads.
namespace welvane {

/// Paths by which cells of a session name its files.
NamedTexts namedPaths(const Session& session);

/// Lines "channel" of an input whose channels are moved, cut or joined.
std::string channelChanges(const SlotChannels& fresh, const SlotChannels& channels);
void changeChannel(SlotChannels& channels, const SessionLine& line);

std::string settingsPart(const StartupSettings& settings);
/// Parts of what differs from the session as it was loaded. Tables that settings of the process fill stand there whole.
std::string sessionParts(const Session& fresh, const Session& session);

/// Makes one part's change; false for a part that is none of these. RunTimeFailure, with the line, for what cannot be
/// read.
bool takePart(const SessionPart& part, const NamedTexts& named, Session& session, StartupSettings& settings);
/// RunTimeFailure where a table has not the size that a run needs, told by the fresh session.
void needWholeTables(const Session& fresh, const Session& session);
/// Whether a run of both gives the same file.
bool sameSession(const Session& one, const Session& other);
bool sameSettings(const StartupSettings& one, const StartupSettings& other);

}  // namespace welvane
