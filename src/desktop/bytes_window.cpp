#include "desktop/bytes_window.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <memory>

#include "desktop/grid_view.h"
#include "desktop/job_watch.h"
#include "desktop/replace_dialog.h"
#include "desktop/text.h"
#include "models/byte_grid.h"

namespace welvane {

BytesWindow::BytesWindow(const WindowLinks& links, QWidget* parent)
    : AreaWindow(links, WorkArea::Tools, "Bytes", parent),
      tag_(new QLabel(this)),
      pages_(new QLabel(this)),
      page_(new QSpinBox(this)) {
    tag_->setTextFormat(Qt::PlainText);
    tag_->setWordWrap(true);
    page().addWidget(tag_);
    addPaging();
    auto bytes = std::make_unique<ByteGrid>(frame().bytes);
    bytes_ = bytes.get();
    grid_ = new GridView(std::move(bytes), "Bytes of the File", links.changed, this);
    grid_->horizontalHeader()->setMinimumSectionSize(1);
    page().addWidget(grid_, 1);
    connect(grid_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& cell) {
        tell(shown(bytes_->hint(grid_->grid().tableRow(cell.row()), grid_->grid().tableColumn(cell.column()))));
    });
    addButton("&Open...", [this] { this->links().give("ID_Open"); });
    addButton("&Find Bad Termination", [this] { findBadEnd(); });
    addButton("&Replace...", [this] { replace(); });
    addClose();
    tell("Point at a byte to be told what it is.");
    refresh();
    resize(880, 620);
    grid_->setFocus();
}

void BytesWindow::addPaging() {
    auto* const line = new QHBoxLayout;
    for (const bool codes : {false, true}) {
        auto* const form = new QRadioButton(codes ? "&Codes" : "&Text", this);
        form->setChecked(!codes);
        connect(form, &QRadioButton::clicked, this, [this, codes] {
            bytes_->showCodes(codes);
            refresh();
        });
        line->addWidget(form);
    }
    line->addStretch(1);
    const auto button = [&](const QString& text, bool (*turned)(ByteViewState&)) {
        auto* const made = new QPushButton(text, this);
        connect(made, &QPushButton::clicked, this, [this, turned] { turn(turned); });
        line->addWidget(made);
    };
    button("&Previous", previousPage);
    auto* const label = new QLabel("Pa&ge", this);
    label->setBuddy(page_);
    page_->setAccessibleName("Page");
    page_->setKeyboardTracking(false);
    line->addWidget(label);
    line->addWidget(page_);
    line->addWidget(pages_);
    button("&Next", nextPage);
    connect(page_, &QSpinBox::valueChanged, this, [this](int number) {
        if (filling_) return;
        goToPage(frame().bytes, static_cast<std::uint64_t>(number));
        refresh();
    });
    page().addLayout(line);
}

void BytesWindow::turn(bool (*turned)(ByteViewState&)) {
    turned(frame().bytes);
    refresh();
}

void BytesWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_PageDown) return turn(nextPage);
    if (event->key() == Qt::Key_PageUp) return turn(previousPage);
    AreaWindow::keyPressEvent(event);
}

void BytesWindow::refresh() {
    const ByteViewState& view = frame().bytes;
    filling_ = true;
    tag_->setText(shown(view.tag()));
    const auto last = static_cast<int>(std::min<std::uint64_t>(view.pageCount(), 2000000000));
    page_->setRange(std::min(1, last), last);
    page_->setValue(static_cast<int>(view.pageStart / bytePageLength) + 1);
    pages_->setText("of " + QString::number(last));
    filling_ = false;
    bytes_->refresh();
    grid_->refresh();
    grid_->resizeColumnsToContents();
}

void BytesWindow::findBadEnd() {
    auto view = std::make_shared<ByteViewState>(frame().bytes);
    links().jobs.run(
        *this, [view](App& app, Session&) { findBadTermination(app, *view); },
        [this, view](const std::string& failure) {
            frame().bytes = *view;
            tell(shown(failure));
            refresh();
        });
}

void BytesWindow::replace() {
    if (frame().bytes.path.empty()) return tell("Open a file first.");
    ReplaceDialog dialog(frame().bytes.path, this);
    if (dialog.exec() != QDialog::Accepted) return;
    auto result = std::make_shared<SearchReplaceResult>();
    links().jobs.run(
        *this, [result, request = dialog.request()](App& app, Session&) { *result = goSearRep(app, request); },
        [this, result](const std::string& failure) {
            if (!failure.empty() || !result->why.empty())
                tell(shown(failure.empty() ? result->why : failure));
            else if (result->done)
                tell(QString("Replaced: %1").arg(result->replacements));
        });
}

}  // namespace welvane
