#include "desktop/coverage_view.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <utility>

#include "desktop/picture_view.h"
#include "desktop/text.h"
#include "desktop/theme.h"

namespace welvane {

namespace {

constexpr int sideWidth = 270, colourBar = 4;

QString shownColour(Ink ink, const QWidget& widget) {
    return colourIn(ink, themeOf(widget.palette())).name();
}

}  // namespace

CoverageView::CoverageView(Frame& frame, std::function<void(const EditOutcome&)> changed, QWidget* parent)
    : QWidget(parent), frame_(frame), session_(frame.session), changed_(std::move(changed)) {
    auto* const line = new QHBoxLayout(this);
    picture_ = new PictureView(
        [this](double width, double height) { return CoverageTab(session_).drawing(width, height); }, "Coverage", this);
    line->addWidget(picture_, 1);
    auto* const scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFixedWidth(sideWidth);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFocusPolicy(Qt::NoFocus);
    auto* const side = new QWidget(scroll);
    auto* const column = new QVBoxLayout(side);
    shallowest_ = plain(side);
    deepest_ = plain(side);
    column->addWidget(shallowest_);
    for (int slot = 0; slot < slotCount; ++slot) column->addWidget(addFile(slot));
    column->addWidget(deepest_);
    column->addWidget(addParameters());
    column->addStretch(1);
    scroll->setWidget(side);
    line->addWidget(scroll);
    refresh();
}

void CoverageView::asStep(const std::string& text, const std::function<void()>& act) {
    {
        const UndoHistory::Step step(frame_.history, frame_.app, session_, text);
        act();
    }
    changed_({});
}

QLabel* CoverageView::plain(QWidget* parent) const {
    auto* const label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QWidget* CoverageView::addFile(int slot) {
    auto* const group = new QGroupBox(this);
    groups_[static_cast<std::size_t>(slot)] = group;
    FileParts& parts = files_[static_cast<std::size_t>(slot)];
    auto* const grid = new QGridLayout(group);
    grid->setContentsMargins(8, 4, 4, 4);
    parts.topCaption = plain(group);
    parts.bottomCaption = plain(group);
    parts.top = plain(group);
    parts.bottom = plain(group);
    grid->addWidget(parts.topCaption, 0, 0);
    grid->addWidget(parts.top, 0, 1);
    grid->addWidget(parts.bottomCaption, 1, 0);
    grid->addWidget(parts.bottom, 1, 1);
    for (int end = 0; end < 2; ++end) {
        const int box = 2 * slot + end;
        auto* const edit = new QLineEdit(group);
        edit->setObjectName(QString("Splice Depth %1").arg(box + 1));
        parts.boxes[static_cast<std::size_t>(end)] = edit;
        parts.boxCaptions[static_cast<std::size_t>(end)] = plain(group);
        connect(edit, &QLineEdit::textEdited, this,
                [this, box](const QString& text) { CoverageTab(session_).type(box, typed(text)); });
        connect(edit, &QLineEdit::returnPressed, this,
                [this, box] { asStep("Enter splice depth", [&] { CoverageTab(session_).enter(box); }); });
        grid->addWidget(parts.boxCaptions[static_cast<std::size_t>(end)], 2 + end, 0);
        grid->addWidget(edit, 2 + end, 1);
    }
    parts.apply = new QPushButton(shown(CoverageTab::applyCaption(slot)), group);
    connect(parts.apply, &QPushButton::clicked, this,
            [this, slot] { asStep(CoverageTab::applyCaption(slot), [&] { CoverageTab(session_).apply(slot); }); });
    grid->addWidget(parts.apply, 4, 0, 1, 2);
    return group;
}

QWidget* CoverageView::addParameters() {
    parameters_ = new QGroupBox("Depths from ~Parameter", this);
    auto* const grid = new QGridLayout(parameters_);
    const auto list = [&](const QString& name, int row) {
        auto* const box = new QComboBox(parameters_);
        box->setEditable(true);
        box->setCompleter(nullptr);
        box->setAccessibleName(name);
        auto* const label = new QLabel(name, parameters_);
        label->setBuddy(box);
        grid->addWidget(label, row, 0);
        grid->addWidget(box, row, 1);
        return box;
    };
    from_ = list("From Parameter", 0);
    to_ = list("To Parameter", 1);
    auto* const apply = new QPushButton("Apply to all file&s", parameters_);
    apply->setToolTip(shown(CoverageTab::applyParametersCaption));
    apply->setAccessibleName(shown(CoverageTab::applyParametersCaption));
    connect(apply, &QPushButton::clicked, this, [this] {
        asStep(std::string(CoverageTab::applyParametersCaption),
               [&] { CoverageTab(session_).applyParameters(typed(from_->currentText()), typed(to_->currentText())); });
    });
    grid->addWidget(apply, 2, 0, 1, 2);
    return parameters_;
}

void CoverageView::paintLabel(QLabel& label, const CoverageLabel& wanted) {
    label.setVisible(wanted.visible);
    label.setText(shown(wanted.text));
    label.setToolTip(shown(wanted.tip));
    label.setAccessibleName(shown(wanted.caption));
}

void CoverageView::refreshFile(int slot) {
    const CoverageTab tab(session_);
    const auto labels = tab.labels();
    const auto boxes = tab.boxes();
    FileParts& parts = files_[static_cast<std::size_t>(slot)];
    const std::size_t first = 2 * static_cast<std::size_t>(slot);
    paintLabel(*parts.top, labels[first]);
    paintLabel(*parts.bottom, labels[first + 1]);
    parts.topCaption->setText(shown(labels[first].caption));
    parts.bottomCaption->setText(shown(labels[first + 1].caption));
    for (std::size_t end = 0; end < 2; ++end) {
        const SpliceBox& box = boxes[first + end];
        if (typed(parts.boxes[end]->text()) != box.text) parts.boxes[end]->setText(shown(box.text));
        parts.boxes[end]->setAccessibleName(shown(box.caption));
        parts.boxCaptions[end]->setText(shown(box.caption));
    }
    parts.apply->setEnabled(tab.canApply(slot));
    QWidget& group = *groups_[static_cast<std::size_t>(slot)];
    group.setVisible(session_.loaded(slot));
    group.setStyleSheet(QString("QGroupBox { border: none; border-left: %1px solid %2; }")
                            .arg(colourBar)
                            .arg(shownColour(slotInk(slot), *this)));
}

void CoverageView::refresh() {
    const CoverageTab tab(session_);
    for (int slot = 0; slot < slotCount; ++slot) refreshFile(slot);
    const auto ends = {std::pair{shallowest_, tab.minTop()}, std::pair{deepest_, tab.maxBottom()}};
    for (const auto& [label, wanted] : ends) {
        paintLabel(*label, wanted);
        label->setText(shown(wanted.caption) + "  " + shown(wanted.text));
    }
    const bool loaded = tab.minTop().visible;
    parameters_->setVisible(loaded);
    const auto fill = [](QComboBox& list, const std::vector<std::string>& items) {
        if (list.count() == static_cast<int>(items.size())) return;
        const QString text = list.currentText();
        list.clear();
        for (const std::string& item : items) list.addItem(shown(item));
        list.setEditText(text);
    };
    fill(*from_, tab.fromParameters());
    fill(*to_, tab.toParameters());
    picture_->update();
}

}  // namespace welvane
