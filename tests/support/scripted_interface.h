#pragma once

#include <deque>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "shared/prompts.h"
#include "support/known_prompts.h"

namespace welvane::test {

/// Answers from a list and remembers what it was asked; an unexpected prompt fails the test, and so does one whose
/// words, buttons or sign are not those that stand in knownPrompts.
class ScriptedInterface : public UserInterface {
  public:
    void willAnswer(Answer answer) { answers_.push_back(answer); }
    void willType(std::string text) { texts_.push_back(std::move(text)); }
    const std::vector<Prompt>& asked() const { return asked_; }
    const std::vector<std::string>& askedForText() const { return askedForText_; }
    const std::vector<TextPrompt>& textPrompts() const { return textPrompts_; }
    const std::vector<FilePrompt>& filePrompts() const { return filePrompts_; }

    Answer ask(const Prompt& prompt) override {
        asked_.push_back(prompt);
        EXPECT_EQ(whyUnknown(prompt), "");
        noteMet(prompt);
        if (answers_.empty()) {
            ADD_FAILURE() << "unexpected prompt \"" << prompt.title << "\": " << prompt.text;
            return prompt.safe();
        }
        const Answer answer = answers_.front();
        answers_.pop_front();
        return answer;
    }
    std::string askText(const TextPrompt& prompt) override {
        textPrompts_.push_back(prompt);
        return nextText(prompt.title);
    }
    std::string askFile(const FilePrompt& prompt) override {
        filePrompts_.push_back(prompt);
        return nextText(prompt.title);
    }
    std::string askFolder(const std::string& title, const std::string&) override { return nextText(title); }

    ~ScriptedInterface() override {
        EXPECT_TRUE(answers_.empty()) << answers_.size() << " expected prompts did not appear";
        EXPECT_TRUE(texts_.empty()) << texts_.size() << " expected text prompts did not appear";
    }

  private:
    std::string nextText(const std::string& title) {
        askedForText_.push_back(title);
        if (texts_.empty()) {
            ADD_FAILURE() << "unexpected text prompt \"" << title << "\"";
            return {};
        }
        std::string text = texts_.front();
        texts_.pop_front();
        return text;
    }
    std::deque<Answer> answers_;
    std::deque<std::string> texts_;
    std::vector<Prompt> asked_;
    std::vector<TextPrompt> textPrompts_;
    std::vector<FilePrompt> filePrompts_;
    std::vector<std::string> askedForText_;
};

}  // namespace welvane::test
