#include "desktop/survey_view.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <utility>

#include "desktop/text.h"
#include "models/survey.h"
#include "models/table_models.h"
#include "session/tvd.h"

namespace welvane {

namespace {

constexpr const char* outsideNote =
    "Note: TVD computations for depths outside of this table depth range are computed using the deviation angles at "
    "each end of the table.";

}  // namespace

SurveyView::SurveyView(Frame& frame, std::function<void(const EditOutcome&)> changed, QWidget* parent)
    : QWidget(parent), frame_(frame), changed_(std::move(changed)) {
    setLayout(new QVBoxLayout);
    addUnits();
    auto model = std::make_unique<CellTableModel>(surveyModel(frame_.session));
    grid_ = new GridView(std::make_unique<UndoableModel>(std::move(model), SessionGrid::Survey, frame_.history,
                                                         frame_.app, frame_.session),
                         "Survey", changed_, this);
    grid_->setClear([this](const CellArea& area) {
        asStep("Clear survey cells", [&] {
            clearTrdSelection(frame_.session.tables.trd, static_cast<int>(area.firstRow), area.firstColumn,
                              static_cast<int>(area.lastRow), area.lastColumn, frame_.app.user);
            return EditOutcome{};
        });
    });
    grid_->setPaste([this](int row, int column, const std::string& text) {
        asStep("Paste survey cells", [&] {
            const PasteReport report = pasteSurvey(frame_.session, row, column, text);
            return EditOutcome{report.clean(), report.summary()};
        });
    });
    layout()->addWidget(grid_);
    auto* const note = new QLabel(outsideNote, this);
    note->setWordWrap(true);
    layout()->addWidget(note);
    addButtons();
    refresh();
    grid_->fitColumns();
}

void SurveyView::addUnits() {
    auto* const line = new QHBoxLayout;
    for (const SurveyUnit unit : {SurveyUnit::Feet, SurveyUnit::Metres}) {
        auto* const button = new QRadioButton(unit == SurveyUnit::Feet ? "Feet" : "Metres", this);
        connect(button, &QRadioButton::clicked, this, [this, unit] {
            asStep("Unit of the survey", [&] {
                setSurveyUnit(frame_.session.tables.trd, unit);
                return EditOutcome{};
            });
        });
        units_[static_cast<std::size_t>(unit)] = button;
        line->addWidget(button);
    }
    line->addStretch(1);
    qobject_cast<QVBoxLayout*>(layout())->addLayout(line);
}

void SurveyView::addButtons() {
    auto* const line = new QHBoxLayout;
    const auto button = [&](const QString& text, std::function<SurveyOutcome()> act) {
        auto* const made = new QPushButton(text, this);
        connect(made, &QPushButton::clicked, this, [this, text, run = std::move(act)] {
            if (frame_.running) return;
            SurveyOutcome result;
            asStep(typed(QString(text).remove('&')), [&] { return (result = run()).outcome; });
            grid_->fitColumns();
            if (result.row >= 0) goTo(result.row, result.column);
        });
        line->addWidget(made);
    };
    button("Compute TVD Column", [this] { return computeSurvey(frame_.app, frame_.session); });
    button("Open TVD File", [this] { return openTVDFile(frame_.app, frame_.session); });
    button("Save Inclinometry Data",
           [this] { return SurveyOutcome{saveInclinometryData(frame_.app, frame_.session)}; });
    line->addStretch(1);
    qobject_cast<QVBoxLayout*>(layout())->addLayout(line);
}

void SurveyView::asStep(const std::string& text, const std::function<EditOutcome()>& act) {
    EditOutcome outcome;
    {
        const UndoHistory::Step step(frame_.history, frame_.app, frame_.session, text);
        outcome = act();
    }
    changed_(outcome);
}

/// The cell becomes the current one, and is in view.
void SurveyView::goTo(int row, int column) {
    const TableModel& table = grid_->grid().table();
    grid_->setCurrentIndex(grid_->model()->index(row - table.headRows(), column - table.headColumns()));
}

void SurveyView::hideEvent(QHideEvent* event) {
    if (trdChanged(frame_.session.tables.trd)) updateInclinometry(frame_.session);
    QWidget::hideEvent(event);
}

void SurveyView::refresh() {
    grid_->refresh();
    if (frame_.session.tables.trd.rows() > 0)
        units_[static_cast<std::size_t>(surveyUnit(frame_.session.tables.trd))]->setChecked(true);
}

}  // namespace welvane
