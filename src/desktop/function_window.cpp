#include "desktop/function_window.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>
#include <utility>

#include "desktop/text.h"

namespace welvane {

namespace {

void fillList(QComboBox& list, const std::vector<std::string>& items, int current) {
    list.clear();
    for (const std::string& item : items) list.addItem(shown(item));
    list.setCurrentIndex(current);
}

QComboBox* addList(QFormLayout& form, const QString& name, bool editable = false) {
    auto* const list = new QComboBox;
    list->setAccessibleName(name);
    list->setObjectName(name);
    list->setEditable(editable);
    if (editable) list->setCompleter(nullptr);  // what is typed stays as it is
    list->setInsertPolicy(QComboBox::NoInsert);
    form.addRow("&" + name, list);
    return list;
}

}  // namespace

FunctionWindow::FunctionWindow(FunctionChoice& choice, QWidget* parent) : QDialog(parent), choice_(choice) {
    setWindowTitle("Function");
    setLayout(new QVBoxLayout);
    addHead();
    addPages();
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { accept(); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout()->addWidget(buttons);
    refresh();
    resize(520, sizeHint().height());
}

void FunctionWindow::changed(const std::function<void()>& act) {
    if (filling_) return;
    act();
    refresh();
}

void FunctionWindow::addHead() {
    auto* const head = new QWidget(this);
    auto* const form = new QFormLayout(head);
    form->setContentsMargins(0, 0, 0, 0);
    function_ = addList(*form, "Function");
    source_ = addList(*form, "Source");
    result_ = addList(*form, "Result", true);
    for (const FunctionEntry& entry : functionCatalogue()) function_->addItem(shown(entry.description));
    connect(function_, &QComboBox::activated, this,
            [this](int code) { changed([&] { chooseFunction(choice_.dialog, choice_.context, code); }); });
    connect(source_, &QComboBox::activated, this, [this](int source) {
        changed([&] {
            chooseSource(choice_.dialog, source);
            updateMFLab(choice_.dialog);
        });
    });
    connect(result_, &QComboBox::editTextChanged, this, [this](const QString& text) {
        if (!filling_) choice_.dialog.conTL = typed(text);
    });
    layout()->addWidget(head);
}

void FunctionWindow::addPages() {
    pages_ = new QTabWidget(this);
    pages_->setAccessibleName("What the function takes");
    const std::array<QWidget*, functionPageNames.size()> pages = {
        matrixPage(),  valuesPage("Value of the P/d page", density_, densityTags_),
        generalPage(), neutronPage(),
        averagePage(), scalePage()};
    for (std::size_t page = 0; page < pages.size(); ++page) pages_->addTab(pages[page], shown(functionPageNames[page]));
    layout()->addWidget(pages_);
}

QLineEdit* FunctionWindow::addLine(QFormLayout& form, const QString& name, std::function<std::string&()> field) {
    auto* const line = new QLineEdit;
    line->setAccessibleName(name);
    line->setObjectName(name);
    form.addRow(name, line);
    connect(line, &QLineEdit::textEdited, this, [field](const QString& text) { field() = typed(text); });
    lines_.emplace_back(line, std::move(field));
    return line;
}

QWidget* FunctionWindow::matrixPage() {
    auto* const page = new QWidget;
    auto* const form = new QFormLayout(page);
    for (int list = 0; list < 2; ++list) {
        QComboBox* const box = addList(*form, list == 0 ? "Matrix In" : "Matrix Out", true);
        matrix_[static_cast<std::size_t>(list)] = box;
        const auto choose = [this, box, list](int row) {
            changed([&] { chooseMatrix(choice_.dialog, choice_.context, list, row, typed(box->currentText())); });
        };
        connect(box, &QComboBox::activated, this, choose);
        connect(box->lineEdit(), &QLineEdit::editingFinished, this, [this, box, choose, list] {
            const auto& rows = choice_.dialog.matr[static_cast<std::size_t>(list)];
            const int row = choice_.dialog.matrIndex[static_cast<std::size_t>(list)];
            if (row >= 0 && typed(box->currentText()) != rows[static_cast<std::size_t>(row)]) choose(row);
        });
    }
    form->addRow(new QLabel("A row can be edited: a name, a colon and the value."));
    return page;
}

QWidget* FunctionWindow::valuesPage(const QString& name, std::array<QLineEdit*, 2>& edits,
                                    std::array<QLabel*, 2>& labels) {
    auto* const page = new QWidget;
    auto* const form = new QFormLayout(page);
    for (std::size_t value = 0; value < 2; ++value) {
        edits[value] = addLine(*form, name + QString(" %1").arg(value + 1),
                               [this, value]() -> std::string& { return choice_.dialog.parT[value]; });
        labels[value] = qobject_cast<QLabel*>(form->labelForField(edits[value]));
    }
    return page;
}

QWidget* FunctionWindow::generalPage() {
    auto* const page = new QWidget;
    auto* const column = new QVBoxLayout(page);
    column->addWidget(valuesPage("Value", general_, generalTags_));
    mathBox_ = new QGroupBox("Formula", page);
    auto* const form = new QFormLayout(mathBox_);
    formula_ = new QLabel(mathBox_);
    formula_->setTextFormat(Qt::PlainText);
    form->addRow(formula_);
    constexpr std::array<const char*, 4> names = {"A", "B", "C", "n"};
    for (std::size_t value = 0; value < names.size(); ++value)
        addLine(*form, names[value], [this, value]() -> std::string& { return choice_.dialog.fT[value]; });
    column->addWidget(mathBox_);
    column->addStretch(1);
    return page;
}

QWidget* FunctionWindow::neutronPage() {
    auto* const page = new QWidget;
    auto* const form = new QFormLayout(page);
    constexpr std::array<const char*, 4> names = {"High count rate", "Low count rate", "High porosity", "Low porosity"};
    for (std::size_t box = 0; box < names.size(); ++box) {
        QLineEdit* const line =
            addLine(*form, names[box], [this, box]() -> std::string& { return choice_.dialog.ncr[box]; });
        connect(line, &QLineEdit::editingFinished, this, [this, line, box] {
            changed([&] { setCountRate(choice_.dialog, choice_.context, box, typed(line->text())); });
        });
    }
    auto* const fill = new QPushButton("&Fill From Log", page);
    connect(fill, &QPushButton::clicked, this,
            [this] { changed([&] { fillCountRatesFromLog(choice_.dialog, choice_.context); }); });
    form->addRow(fill);
    toolBox_ = new QWidget(page);
    auto* const lists = new QFormLayout(toolBox_);
    lists->setContentsMargins(0, 0, 0, 0);
    tools_[0] = addList(*lists, "Tool");
    tools_[1] = addList(*lists, "Diameter");
    connect(tools_[0], &QComboBox::activated, this, [this](int row) {
        changed([&] { chooseTool(choice_.dialog, choice_.context, static_cast<std::size_t>(row)); });
    });
    connect(tools_[1], &QComboBox::activated, this, [this](int row) {
        changed([&] { chooseDiameter(choice_.dialog, choice_.context, static_cast<std::size_t>(row)); });
    });
    form->addRow(toolBox_);
    return page;
}

QWidget* FunctionWindow::averagePage() {
    auto* const page = new QWidget;
    auto* const form = new QFormLayout(page);
    for (const int option : {1, 2}) {
        auto* const button =
            new QRadioButton(option == 1 ? "&Weighted over three points" : "&Number of points on each side", page);
        connect(button, &QRadioButton::clicked, this, [this, option] { choice_.dialog.funOpt = option; });
        shows_.emplace_back([this, button, option] { button->setChecked(choice_.dialog.funOpt == option); });
        form->addRow(button);
    }
    addLine(*form, "Points", [this]() -> std::string& { return choice_.dialog.aveT; });
    return page;
}

QWidget* FunctionWindow::scalePage() {
    auto* const page = new QWidget;
    auto* const form = new QFormLayout(page);
    for (std::size_t value = 0; value < choice_.dialog.linlogT.size(); ++value)
        addLine(*form,
                shown(choice_.dialog.linlogTags[value].empty() ? "Scale " + std::to_string(value + 1)
                                                               : choice_.dialog.linlogTags[value]),
                [this, value]() -> std::string& { return choice_.dialog.linlogT[value]; });
    auto* const logarithmic = new QCheckBox("&Logarithmic", page);
    connect(logarithmic, &QCheckBox::clicked, this, [this](bool on) { choice_.dialog.llChk = on; });
    shows_.emplace_back([this, logarithmic] { logarithmic->setChecked(choice_.dialog.llChk); });
    form->addRow(logarithmic);
    return page;
}

void FunctionWindow::refreshLists() {
    const FunctionDialog& dialog = choice_.dialog;
    function_->setCurrentIndex(dialog.funLst);
    fillList(*source_, dialog.fNamT, dialog.source);
    fillList(*result_, dialog.resultList, -1);
    result_->setEditText(shown(dialog.conTL));
    for (std::size_t list = 0; list < 2; ++list) {
        fillList(*matrix_[list], dialog.matr[list], dialog.matrIndex[list]);
        const int row = tools_[list]->currentIndex();
        fillList(*tools_[list], dialog.ttLst[list], row);
    }
    toolBox_->setVisible(dialog.toolListsVisible);
}

void FunctionWindow::refresh() {
    filling_ = true;
    const FunctionDialog& dialog = choice_.dialog;
    refreshLists();
    for (const auto& [line, field] : lines_)
        if (typed(line->text()) != field()) line->setText(shown(field()));
    for (const auto& show : shows_) show();
    for (std::size_t value = 0; value < 2; ++value) {
        densityTags_[value]->setText(shown(dialog.parTags[value]));
        const std::string& tag = dialog.parTags[value];
        generalTags_[value]->setText(tag.empty() ? QString("Value %1").arg(value + 1) : shown(tag));
    }
    formula_->setText(shown(dialog.formula));
    const auto code = static_cast<FunctionCode>(dialog.funLst);
    const std::optional<FunctionPage> own = dialog.funLst < 0 ? std::nullopt : pageOf(code);
    for (int page = 0; page < pages_->count(); ++page)
        pages_->setTabEnabled(page, own && page == static_cast<int>(*own));
    pages_->setEnabled(own.has_value());
    if (own) pages_->setCurrentIndex(static_cast<int>(*own));
    mathBox_->setVisible(code == FunctionCode::Math);
    general_[0]->parentWidget()->setVisible(code != FunctionCode::Math);
    filling_ = false;
}

void FunctionWindow::accept() {
    descriptor_ = AddFunToList(choice_.dialog, choice_.context);
    if (descriptor_) QDialog::accept();
}

}  // namespace welvane
