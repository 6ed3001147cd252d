#include "desktop/make_las_view.h"

#include <QClipboard>
#include <QComboBox>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QSplitter>
#include <memory>
#include <utility>

#include "desktop/job_watch.h"
#include "desktop/text.h"
#include "models/make_las_tab.h"
#include "models/table_models.h"

namespace welvane {

MakeLasView::MakeLasView(Frame& frame, JobWatch& jobs, std::function<void(const EditOutcome&)> changed, QWidget* parent)
    : QWidget(parent), frame_(frame), jobs_(jobs), changed_(std::move(changed)) {
    setLayout(new QVBoxLayout);
    addChoices();
    auto* const parts = new QSplitter(Qt::Vertical, this);
    grid_ = new GridView(std::make_unique<GenericTableModel>(frame_.grd, &frame_.history), "Table", changed_, parts);
    grid_->setMenu([this](int row, int, QMenu& menu) {
        const std::size_t line = lineOfTableRow(frame_.grd, row);
        if (line == 0) return;
        menu.addAction("&Data Starts Here", this, [this, line] {
            dataLine_->setValue(static_cast<int>(line));
            load(frame_.tablePath);
        });
    });
    parts->addWidget(grid_);
    auto* const box = new QWidget(parts);
    box->setLayout(new QVBoxLayout);
    box->layout()->setContentsMargins(0, 0, 0, 0);
    header_ = new QPlainTextEdit(box);
    header_->setAccessibleName("Header of the new file");
    header_->setObjectName("Header of the new file");
    header_->setTabChangesFocus(true);
    header_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    header_->setLineWrapMode(QPlainTextEdit::NoWrap);
    auto* const label = new QLabel("Header of the new file, where no file is named for it:", box);
    label->setBuddy(header_);
    box->layout()->addWidget(label);
    box->layout()->addWidget(header_);
    parts->setSizes({400, 160});
    layout()->addWidget(parts);
    addHeader();
    header_->setPlainText(shown(tableHeaderText(frame_)));
    connect(header_, &QPlainTextEdit::textChanged, this,
            [this] { setTableHeaderText(frame_, typed(header_->toPlainText())); });
}

void MakeLasView::addChoices() {
    auto* const line = new QHBoxLayout;
    const auto button = [&](const QString& text, const std::function<void()>& act) {
        auto* const made = new QPushButton(text, this);
        connect(made, &QPushButton::clicked, this, act);
        line->addWidget(made);
    };
    button("Open Ta&ble...", [this] {
        const std::string path = askTableFile(frame_);
        if (!path.empty()) load(path);
    });
    button("&ClipBoard", [this] { loadClipboard(); });
    delimiter_ = new QComboBox(this);
    delimiter_->setAccessibleName("Columns are divided by");
    delimiter_->setToolTip("What divides the columns of the table");
    for (const DelimiterChoice& choice : delimiterChoices()) delimiter_->addItem(shown(choice.text));
    line->addWidget(delimiter_);
    auto* const label = new QLabel("Data starts at line", this);
    dataLine_ = new QSpinBox(this);
    dataLine_->setAccessibleName("Data starts at line");
    dataLine_->setRange(0, 2000000000);
    dataLine_->setSpecialValueText("found");
    label->setBuddy(dataLine_);
    line->addWidget(label);
    line->addWidget(dataLine_);
    button("&Sort Depth", [this] {
        sortTable(frame_);
        changed_({});
    });
    line->addStretch(1);
    qobject_cast<QVBoxLayout*>(layout())->addLayout(line);
}

void MakeLasView::addHeader() {
    auto* const line = new QHBoxLayout;
    auto* const label = new QLabel("Header from file", this);
    headerFile_ = new QLineEdit(shown(frame_.headerFile), this);
    headerFile_->setAccessibleName("Header from file");
    label->setBuddy(headerFile_);
    connect(headerFile_, &QLineEdit::textEdited, this,
            [this](const QString& text) { frame_.headerFile = typed(text); });
    auto* const browse = new QPushButton("...", this);
    browse->setAccessibleName("Choose the file of the header");
    connect(browse, &QPushButton::clicked, this, [this] {
        const std::string path = askHeaderFile(frame_);
        if (path.empty()) return;
        frame_.headerFile = path;
        headerFile_->setText(shown(path));
    });
    line->addWidget(label);
    line->addWidget(headerFile_, 1);
    line->addWidget(browse);
    qobject_cast<QVBoxLayout*>(layout())->addLayout(line);
}

LoadOptions MakeLasView::options() const {
    return {delimiterChoices()[static_cast<std::size_t>(delimiter_->currentIndex())].delimiter,
            static_cast<std::size_t>(dataLine_->value())};
}

void MakeLasView::load(const std::string& path) {
    struct Loaded {
        GenericTable grd;
        TableLoadResult result;
    };
    auto loaded = std::make_shared<Loaded>();
    jobs_.run(
        *this,
        [loaded, path, how = options()](App& app, Session&) {
            loaded->result = loadTable(app, path, how, loaded->grd);
        },
        [this, loaded, path](const std::string& failure) {
            if (!failure.empty()) return changed_({false, failure});
            taken(path, loaded->grd, loaded->result);
        });
}

void MakeLasView::loadClipboard() {
    GenericTable grd;
    const TableLoadResult result =
        loadTableText(frame_.app, typed(QGuiApplication::clipboard()->text()), options(), grd);
    taken("", grd, result);
}

void MakeLasView::taken(const std::string& path, GenericTable& grd, const TableLoadResult& result) {
    const EditOutcome outcome = takeTable(frame_, path, std::move(grd), result);
    grid_->refresh();
    grid_->fitColumns();
    changed_(outcome);
}

void MakeLasView::refresh() {
    grid_->refresh();
    const std::string text = tableHeaderText(frame_);
    if (typed(header_->toPlainText()) != text) header_->setPlainText(shown(text));
}

}  // namespace welvane
