#pragma once

#include "shared/prompts.h"

class QWidget;

namespace welvane {

/// Shows the questions of the program as boxes, word for word, on the window's thread. Escape is the safe answer.
class BoxInterface : public UserInterface {
  public:
    /// The window that boxes stand upon; it may be set late and must outlive them.
    void setParent(QWidget* parent) { parent_ = parent; }

    Answer ask(const Prompt& prompt) override;
    std::string askText(const TextPrompt& prompt) override;
    std::string askFile(const FilePrompt& prompt) override;
    std::string askFolder(const std::string& title, const std::string& start) override;

  private:
    QWidget* parent_ = nullptr;
};

}  // namespace welvane
