#include "desktop/browser_panel.h"

#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "desktop/text.h"

namespace welvane {

namespace {

constexpr int folderListHeight = 90;

QLabel* plainLabel(QWidget* parent) {
    auto* const label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    // A path without blanks has no place to break at: it must not make the panel wider.
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return label;
}

QListWidget* namedList(const QString& name, QWidget* parent) {
    auto* const list = new QListWidget(parent);
    list->setAccessibleName(name);
    list->setObjectName(name);
    return list;
}

}  // namespace

BrowserPanel::BrowserPanel(Frame& frame, std::function<void()> changed, std::function<void()> activated,
                           QWidget* parent)
    : QWidget(parent),
      frame_(frame),
      browser_(frame),
      changed_(std::move(changed)),
      activated_(std::move(activated)),
      source_(plainLabel(this)),
      destination_(plainLabel(this)),
      heading_(plainLabel(this)),
      details_(plainLabel(this)),
      folders_(namedList("Folders", this)),
      files_(namedList("Files", this)) {
    auto* const layout = new QVBoxLayout(this);
    const auto button = [&](const QString& text, bool (FileBrowser::*act)()) {
        auto* const made = new QPushButton(text, this);
        connect(made, &QPushButton::clicked, this, [this, act] {
            (browser_.*act)();
            refresh();
            changed_();
        });
        return made;
    };
    layout->addWidget(button("So&urce Folder...", &FileBrowser::chooseSource));
    layout->addWidget(source_);
    layout->addWidget(button("Destin&ation Folder...", &FileBrowser::chooseDestination));
    layout->addWidget(destination_);
    folders_->setMaximumHeight(folderListHeight);
    layout->addWidget(folders_);
    layout->addWidget(heading_);
    layout->addWidget(files_, 1);
    auto* const line = new QHBoxLayout;
    line->addWidget(button("E&xtension...", &FileBrowser::chooseExtension));
    line->addWidget(button("New Fo&lder...", &FileBrowser::makeFolder));
    layout->addLayout(line);
    layout->addWidget(details_);
    connect(folders_, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) {
        browser_.enterFolder(browser_.folders()[static_cast<std::size_t>(folders_->row(item))]);
        refresh();
        changed_();
    });
    connect(files_, &QListWidget::itemSelectionChanged, this, [this] {
        if (!filling_) takeSelection();
    });
    connect(files_, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) {
        // The keyboard can stand on a file that was never selected.
        if (!item->isSelected()) files_->setCurrentItem(item, QItemSelectionModel::ClearAndSelect);
        activated_();
    });
    files_->installEventFilter(this);
    refresh();
}

// A list that is taken apart tells of its selection once more, when nothing is there to hear it.
BrowserPanel::~BrowserPanel() {
    files_->disconnect(this);
    files_->removeEventFilter(this);
}

bool BrowserPanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched == files_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
        browser_.deleteSelected();
        refresh();
        changed_();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void BrowserPanel::takeSelection() {
    std::vector<std::string> names;
    for (int row = 0; row < files_->count(); ++row)
        if (files_->item(row)->isSelected()) names.push_back(browser_.files()[static_cast<std::size_t>(row)]);
    browser_.select(std::move(names));
    showDetails();
    changed_();
}

void BrowserPanel::refresh() {
    filling_ = true;
    browser_.refresh();
    files_->setSelectionMode(frame_.app.settings.multipleSelection ? QAbstractItemView::ExtendedSelection
                                                                   : QAbstractItemView::SingleSelection);
    source_->setText(shown(browser_.sourceLabel()));
    destination_->setText(shown(browser_.destinationLabel()));
    heading_->setText(shown(browser_.heading()));
    folders_->clear();
    folders_->setVisible(!browser_.folders().empty());
    for (const std::string& name : browser_.folders()) folders_->addItem(shown(lineOfName(name)));
    files_->clear();
    for (const std::string& name : browser_.files()) files_->addItem(shown(lineOfName(name)));
    const std::vector<std::string>& selected = browser_.selected();
    for (int row = 0; row < files_->count(); ++row) {
        const std::string& name = browser_.files()[static_cast<std::size_t>(row)];
        if (std::find(selected.begin(), selected.end(), name) != selected.end()) files_->item(row)->setSelected(true);
    }
    filling_ = false;
    showDetails();
}

void BrowserPanel::showDetails() {
    QString text;
    for (const auto& [name, value] : browser_.details()) text += shown(name) + ": " + shown(value) + "\n";
    details_->setText(text.trimmed());
}

}  // namespace welvane
