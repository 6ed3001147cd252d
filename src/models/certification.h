#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "certify/batch.h"
#include "models/browser.h"

/// The window of the command ID_Certify around a batch certification.
namespace welvane {

/// certText, the log of the row that was clicked, and its label.
struct CheckDetails {
    std::string label = "Detailed Results";
    std::string text;
    std::uint32_t colour = 0;
    bool visible = false;
};

/// Fills the list of files: what is selected in the browser when it is open, otherwise the current input alone.
void fillCr(BatchCertification& batch, const BrowserState* browser, std::string_view lasFile);

/// A click on a row of crd: shows that file's log; nothing happens on the head, outside, or where there is no log. A
/// new run hides the details again.
void clickRow(CheckDetails& details, const BatchCertification& batch, int row);

/// The question of ID_Print, then the text to print: every file with its verdict and log, or the row `current` (of crd)
/// alone.
std::string printCertify(App& app, const BatchCertification& batch, int current);

}  // namespace welvane
