#pragma once

#include <QWidget>
#include <functional>

#include "desktop/grid_view.h"
#include "models/frame.h"

class QComboBox;
class QLineEdit;
class QPlainTextEdit;
class QSpinBox;

namespace welvane {

class JobWatch;

/// The tab "Make LAS": a table of columns on its way to a LAS file, and the header that it gets.
class MakeLasView : public QWidget {
  public:
    /// `changed` is called behind each edit.
    MakeLasView(Frame& frame, JobWatch& jobs, std::function<void(const EditOutcome&)> changed, QWidget* parent);
    void refresh();

  private:
    void addChoices();
    void addHeader();
    void load(const std::string& path);
    void loadClipboard();
    void taken(const std::string& path, GenericTable& grd, const TableLoadResult& result);
    LoadOptions options() const;

    Frame& frame_;
    JobWatch& jobs_;
    std::function<void(const EditOutcome&)> changed_;
    QComboBox* delimiter_ = nullptr;
    QSpinBox* dataLine_ = nullptr;
    GridView* grid_;
    QLineEdit* headerFile_ = nullptr;
    QPlainTextEdit* header_ = nullptr;
};

}  // namespace welvane
