#pragma once

#include <QDialog>
#include <array>
#include <functional>
#include <vector>

#include "models/function_choice.h"

class QComboBox;
class QFormLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QTabWidget;

namespace welvane {

/// Choosing a function for a channel: its source and result, and six pages, of which the function's own is shown.
class FunctionWindow : public QDialog {
  public:
    FunctionWindow(FunctionChoice& choice, QWidget* parent);
    /// What was chosen by OK.
    const std::optional<FunctionDescriptor>& descriptor() const { return descriptor_; }

    void accept() override;

  private:
    using Text = std::string& (*)(FunctionDialog&, std::size_t);
    void addHead();
    void addPages();
    QWidget* matrixPage();
    QWidget* valuesPage(const QString& name, std::array<QLineEdit*, 2>& edits, std::array<QLabel*, 2>& labels);
    QWidget* generalPage();
    QWidget* neutronPage();
    QWidget* averagePage();
    QWidget* scalePage();
    /// A line that writes what is typed to where `field` says.
    QLineEdit* addLine(QFormLayout& form, const QString& name, std::function<std::string&()> field);
    void changed(const std::function<void()>& act);
    void refresh();
    void refreshLists();

    FunctionChoice& choice_;
    std::optional<FunctionDescriptor> descriptor_;
    QComboBox *function_ = nullptr, *source_ = nullptr, *result_ = nullptr;
    QTabWidget* pages_ = nullptr;
    std::array<QComboBox*, 2> matrix_{}, tools_{};
    std::array<QLineEdit*, 2> density_{}, general_{};
    std::array<QLabel*, 2> densityTags_{}, generalTags_{};
    QGroupBox* mathBox_ = nullptr;
    QLabel* formula_ = nullptr;
    QWidget* toolBox_ = nullptr;
    /// Lines that only show what they write.
    std::vector<std::pair<QLineEdit*, std::function<std::string&()>>> lines_;
    std::vector<std::function<void()>> shows_;  ///< what refresh() calls beside
    bool filling_ = false;
};

}  // namespace welvane
