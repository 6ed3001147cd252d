#pragma once

#include <cstdint>
#include <optional>

#include "models/frame.h"

/// What the commands do that are more than one call.
namespace welvane {

/// ID_Multiple: several files in the browser's list, or, with a session in front, several links of one channel.
void toggleMultiple(Frame& frame);
void toggleCertifyAfter(Frame& frame);
void toggleEditAfter(Frame& frame);

/// ID_Undo: takes the last step back. What stays as it is is told in a box, with what the next one takes back.
void takeBack(Frame& frame);

/// ID_Size: asks for the column width of the grids.
void chooseColumnWidth(Frame& frame);
/// The width that was chosen there, in twentieths of a point; nothing while columns fit what they hold.
std::optional<std::int32_t> chosenColumnWidth(const App& app);
/// ID_Font: the font of the grids, by the window's dialog.
void chooseGridFont(Frame& frame);

/// ID_Open: asks for a file and opens it in the area that is in front.
void openFile(Frame& frame);
/// ID_Save: the library and the survey tab save, anywhere else in a session it is ID_Process.
void saveActive(Frame& frame);
/// ID_Print: what the area in front has to print.
void printActive(Frame& frame);
/// ID_editLAS: the selected files in their programs, more than ten after a question.
void editFiles(Frame& frame);
/// ID_ViewLog: the current input, else the file of the first slot.
void viewLog(Frame& frame);

void addChannel(Frame& frame);
void deleteChannel(Frame& frame);

}  // namespace welvane
