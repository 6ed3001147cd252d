#include "desktop/certify_window.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSplitter>

#include "certify/checker_log.h"
#include "desktop/grid_view.h"
#include "desktop/text.h"
#include "desktop/theme.h"

namespace welvane {

CertifyWindow::CertifyWindow(const WindowLinks& links, QWidget* parent)
    : AreaWindow(links, WorkArea::Certify, "Certify", parent),
      repair_(new QCheckBox("Attempt &Repair", this)),
      keepLogs_(new QCheckBox("Save &Logs", this)),
      label_(new QLabel(this)),
      log_(new QPlainTextEdit(this)) {
    addOptions();
    auto* const parts = new QSplitter(this);
    files_ = new GridView(std::make_unique<CellTableModel>(frame().certification.crd, TableRules{.headColumns = 0}),
                          "Files to Certify", links.changed, parts);
    files_->setSelectionBehavior(QAbstractItemView::SelectRows);
    files_->horizontalHeader()->setStretchLastSection(true);
    auto* const beside = new QWidget(parts);
    auto* const column = new QVBoxLayout(beside);
    column->setContentsMargins(0, 0, 0, 0);
    label_->setTextFormat(Qt::PlainText);
    label_->setBuddy(log_);
    column->addWidget(label_);
    log_->setReadOnly(true);
    log_->setTabChangesFocus(true);
    log_->setAccessibleName("Log of the Checker");
    column->addWidget(log_, 1);
    parts->setStretchFactor(0, 3);
    parts->setStretchFactor(1, 2);
    page().addWidget(parts, 1);
    connect(files_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] { showLog(); });
    frame().actionsOf(WorkArea::Certify).printText = [this] {
        return printCertify(frame().app, frame().certification, files_->grid().tableRow(files_->currentIndex().row()));
    };
    addButton("&Check", [this] { this->links().give("ID_Process"); });
    addButton("&Print...", [this] { this->links().give("ID_Print"); });
    addClose();
    refresh();
    files_->setColumnWidth(0, 330);
    resize(900, 460);
    files_->setFocus();
}

void CertifyWindow::addOptions() {
    auto* const line = new QHBoxLayout;
    for (int kind = 0; kind < checkKindCount; ++kind) {
        auto* const made = new QRadioButton(shown(checkCaption(static_cast<CheckKind>(kind))), this);
        made->setAccessibleName(made->text());
        connect(made, &QRadioButton::clicked, this, [this, kind] {
            chooseCheck(frame().certification, static_cast<CheckKind>(kind));
            refresh();
        });
        line->addWidget(made);
        kinds_[static_cast<std::size_t>(kind)] = made;
    }
    line->addStretch(1);
    connect(repair_, &QCheckBox::toggled, this, [this](bool on) { frame().certification.attemptRepair = on; });
    connect(keepLogs_, &QCheckBox::toggled, this, [this](bool on) { frame().certification.saveLogs = on; });
    line->addWidget(repair_);
    line->addWidget(keepLogs_);
    page().addLayout(line);
}

void CertifyWindow::showLog() {
    details_ = {};
    if (files_->currentIndex().isValid())
        clickRow(details_, frame().certification, files_->grid().tableRow(files_->currentIndex().row()));
    label_->setText(shown(details_.label));
    log_->setPlainText(shown(details_.text));
    log_->setEnabled(details_.visible);
    QPalette colours = palette();
    if (details_.visible) {
        // A log is read: the mark's colour, dark enough on light paper and light enough on dark.
        const bool failed = details_.colour == failedColour;
        const bool dark = themeOf(palette()) == Theme::Dark;
        colours.setColor(QPalette::Text, failed ? (dark ? QColor(255, 140, 130) : QColor(176, 0, 0))
                                                : (dark ? QColor(130, 220, 140) : QColor(0, 105, 20)));
    }
    log_->setPalette(colours);
}

void CertifyWindow::refresh() {
    const BatchCertification& batch = frame().certification;
    kinds_[static_cast<std::size_t>(batch.kind)]->setChecked(true);
    repair_->setChecked(batch.attemptRepair);
    keepLogs_->setChecked(batch.saveLogs);
    files_->refresh();
    showLog();
}

}  // namespace welvane
