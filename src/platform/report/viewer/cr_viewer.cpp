#include "platform/report/viewer/cr_viewer.h"

#include "platform/base/error.h"
#include "platform/controls/look.h"
#include "platform/report/viewer/output.h"
#include "platform/report/viewer/page_view.h"
#include "platform/report/viewer/viewer_keys.h"

#include <QAction>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSplitter>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <functional>

namespace zel::viewer {

struct CRViewer91::Private {
    QToolBar *tools = nullptr;
    PageView *pages = nullptr;
    QTreeWidget *tree = nullptr;
    QLineEdit *pageBox = nullptr;
    QLabel *ofPages = nullptr;
    QLabel *zoom = nullptr;
    QLineEdit *findBox = nullptr;
    QLabel *ofHits = nullptr;
    QAction *fitWidth = nullptr;
    QAction *fitPage = nullptr;
    std::shared_ptr<report::Report> source;

    [[nodiscard]] const report::DocumentPtr &document() const { return pages->document(); }
    void showPlace() const;
    void showFit() const;
    void showGroups() const;
    void showHits() const;
    [[nodiscard]] bool pressInBox(QLineEdit &box, QKeyEvent &event) const;
    void read(int page) const;
    void addNavigation(CRViewer91 &viewer);
    void addZoom(CRViewer91 &viewer);
    void addFind(CRViewer91 &viewer);
    void addOutput(CRViewer91 &viewer);
};

namespace {

/// Of a tool's key.
enum class AnsweredBy { Tool, Pages };

struct Tool {
    const char *name; ///< of the action
    const char *icon;
    const controls::Shortcut &key;
    AnsweredBy answeredBy = AnsweredBy::Tool;
};

constexpr Tool firstTool{"actFirst", "first", keys::FirstPage, AnsweredBy::Pages};
constexpr Tool previousTool{"actPrevious", "previous", keys::PreviousPage};
constexpr Tool nextTool{"actNext", "next", keys::NextPage};
constexpr Tool lastTool{"actLast", "last", keys::LastPage, AnsweredBy::Pages};
constexpr Tool zoomOutTool{"actZoomOut", "zoom-out", keys::ZoomOut};
constexpr Tool zoomInTool{"actZoomIn", "zoom-in", keys::ZoomIn};
constexpr Tool fitWidthTool{"actFitWidth", "fit-width", keys::FitWidth};
constexpr Tool fitPageTool{"actFitPage", "fit-page", keys::FitPage};
constexpr Tool findTool{"actFind", "search", keys::FindNext};
constexpr Tool refreshTool{"actRefresh", "refresh", keys::Refresh};
constexpr Tool printTool{"actPrint", "print", keys::Print};
constexpr Tool exportTool{"actExport", "export", keys::Export};

/// On the viewer and whatever stands on it.
void setKey(QAction &action, const controls::Shortcut &key) {
    action.setShortcut(QKeySequence(key.key));
    action.setShortcutContext(Qt::WidgetWithChildrenShortcut);
}

QString tipOf(const controls::Shortcut &key) {
    return QStringLiteral("%1 (%2)").arg(CRViewer91::tr(key.does), key.shown());
}

QAction *addTool(QToolBar &bar, const Tool &tool, QWidget *viewer, const std::function<void()> &run) {
    auto *action = new QAction(controls::icon(tool.icon), CRViewer91::tr(tool.key.does), viewer);
    action->setObjectName(QString::fromLatin1(tool.name));
    if (tool.answeredBy == AnsweredBy::Tool)
        setKey(*action, tool.key);
    action->setToolTip(tipOf(tool.key));
    viewer->addAction(action);
    bar.addAction(action);
    QObject::connect(action, &QAction::triggered, viewer, run);
    return action;
}

void addNodes(QTreeWidgetItem *parent, const std::vector<report::GroupNode> &nodes) {
    for (const report::GroupNode &node : nodes) {
        auto *item = new QTreeWidgetItem(parent, {node.title});
        item->setData(0, Qt::UserRole, node.page);
        addNodes(item, node.children);
    }
}

} // namespace

void CRViewer91::Private::showPlace() const {
    const int count = document() ? document()->pageCount() : 0;
    pageBox->setText(count > 0 ? QString::number(pages->currentPage() + 1) : QString());
    ofPages->setText(QStringLiteral("/ %1").arg(count));
}

void CRViewer91::Private::showFit() const {
    zoom->setText(QStringLiteral("%1%").arg(qRound(pages->zoom() * 100)));
    fitWidth->setChecked(pages->fit() == PageView::Fit::Width);
    fitPage->setChecked(pages->fit() == PageView::Fit::Page);
}

void CRViewer91::Private::showGroups() const {
    tree->clear();
    addNodes(tree->invisibleRootItem(), document()->groups());
    tree->setVisible(tree->topLevelItemCount() > 0);
}

void CRViewer91::Private::showHits() const {
    const auto hits = pages->hits();
    const bool missed = hits && hits->all == 0;
    QString words;
    if (missed)
        words = tr("Not found");
    else if (hits)
        words = hits->current > 0 ? tr("%1 of %2").arg(hits->current).arg(hits->all)
                                  : tr("%1 found").arg(hits->all);
    ofHits->setText(words);
    findBox->setToolTip(missed ? words : QString());
    QPalette palette = pages->palette();
    if (missed)
        palette.setColor(QPalette::Text, Qt::red);
    findBox->setPalette(palette);
}

bool CRViewer91::Private::pressInBox(QLineEdit &box, QKeyEvent &event) const {
    switch (event.key()) {
    case Qt::Key_Escape:
        if (&box == findBox)
            findBox->clear();
        pages->setFocus();
        return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return QCoreApplication::sendEvent(pages, &event);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (&box != findBox)
            return false;
        pages->findNext(event.modifiers().testFlag(Qt::ShiftModifier));
        return true;
    default:
        return false;
    }
}

void CRViewer91::Private::read(int page) const {
    if (!source)
        return;
    pages->setDocument(source->document(), page);
    showGroups();
    showPlace();
    showFit();
}

void CRViewer91::Private::addNavigation(CRViewer91 &viewer) {
    addTool(*tools, firstTool, &viewer, [this] { pages->showPage(0); });
    addTool(*tools, previousTool, &viewer, [this] { pages->showPage(pages->currentPage() - 1); });
    pageBox = new QLineEdit(&viewer);
    pageBox->setObjectName(QStringLiteral("txtPage"));
    pageBox->setAccessibleName(tr("Page"));
    pageBox->setToolTip(tr("Page; Enter goes to it"));
    pageBox->setAlignment(Qt::AlignRight);
    pageBox->setMaxLength(7);
    pageBox->installEventFilter(&viewer);
    pageBox->setFixedWidth(viewer.fontMetrics().horizontalAdvance(QStringLiteral("0000000")) + 12);
    ofPages = new QLabel(&viewer);
    tools->addWidget(pageBox);
    tools->addWidget(ofPages);
    addTool(*tools, nextTool, &viewer, [this] { pages->showPage(pages->currentPage() + 1); });
    addTool(*tools, lastTool, &viewer, [&viewer, this] { pages->showPage(viewer.pageCount() - 1); });
    tools->addSeparator();
    connect(pages, &PageView::currentPageChanged, &viewer, [this] { showPlace(); });
    connect(pageBox, &QLineEdit::returnPressed, &viewer, [this] {
        bool number = false;
        const int page = pageBox->text().toInt(&number);
        if (number)
            pages->showPage(page - 1);
        pages->setFocus();
    });
    // Whatever else was typed, the box says again where the reader is.
    connect(pageBox, &QLineEdit::editingFinished, &viewer, [this] { showPlace(); });
    connect(tree, &QTreeWidget::currentItemChanged, &viewer, [this](QTreeWidgetItem *item) {
        if (item)
            pages->showPage(item->data(0, Qt::UserRole).toInt());
    });
}

void CRViewer91::Private::addZoom(CRViewer91 &viewer) {
    addTool(*tools, zoomOutTool, &viewer, [this] { pages->setZoom(pages->zoom() / 1.25); });
    zoom = new QLabel(&viewer);
    zoom->setAlignment(Qt::AlignCenter);
    zoom->setMinimumWidth(viewer.fontMetrics().horizontalAdvance(QStringLiteral("0000%")));
    tools->addWidget(zoom);
    QAction *larger = addTool(*tools, zoomInTool, &viewer, [this] { pages->setZoom(pages->zoom() * 1.25); });
    larger->setShortcuts({QKeySequence(keys::ZoomIn.key), QKeySequence(keys::ZoomInToo.key)});
    fitWidth = addTool(*tools, fitWidthTool, &viewer, [this] { pages->setFit(PageView::Fit::Width); });
    fitPage = addTool(*tools, fitPageTool, &viewer, [this] { pages->setFit(PageView::Fit::Page); });
    fitWidth->setCheckable(true);
    fitPage->setCheckable(true);
    auto *continuous = new QAction(tr("Continuous"), &viewer);
    continuous->setObjectName(QStringLiteral("actContinuous"));
    continuous->setToolTip(tipOf(keys::Continuous));
    setKey(*continuous, keys::Continuous);
    continuous->setCheckable(true);
    continuous->setChecked(true);
    connect(continuous, &QAction::toggled, pages, &PageView::setContinuous);
    viewer.addAction(continuous);
    tools->addAction(continuous);
    tools->addSeparator();
    connect(pages, &PageView::zoomChanged, &viewer, [this] { showFit(); });
}

void CRViewer91::Private::addFind(CRViewer91 &viewer) {
    findBox = new QLineEdit(&viewer);
    findBox->setObjectName(QStringLiteral("txtFind"));
    findBox->setAccessibleName(tr("Find"));
    findBox->setPlaceholderText(tr("Find (%1)").arg(keys::Find.shown()));
    findBox->setClearButtonEnabled(true);
    findBox->setMaximumWidth(220);
    findBox->installEventFilter(&viewer);
    ofHits = new QLabel(&viewer);
    ofHits->setObjectName(QStringLiteral("lblHits"));
    ofHits->setAlignment(Qt::AlignCenter);
    ofHits->setMinimumWidth(viewer.fontMetrics().horizontalAdvance(QStringLiteral("000 of 0000")));
    tools->addWidget(findBox);
    tools->addWidget(ofHits);
    addTool(*tools, findTool, &viewer, [this] { pages->findNext(false); });
    tools->addSeparator();
    connect(findBox, &QLineEdit::textChanged, pages, &PageView::mark);
    connect(pages, &PageView::hitsChanged, &viewer, [this] { showHits(); });
    const auto addKey = [&](const char *name, const controls::Shortcut &key, const auto &run) {
        auto *action = new QAction(&viewer);
        action->setObjectName(QString::fromLatin1(name));
        setKey(*action, key);
        viewer.addAction(action);
        connect(action, &QAction::triggered, &viewer, run);
    };
    addKey("actToFind", keys::Find, [this] {
        findBox->setFocus(Qt::ShortcutFocusReason);
        findBox->selectAll();
    });
    addKey("actFindBefore", keys::FindBefore, [this] { pages->findNext(true); });
}

void CRViewer91::Private::addOutput(CRViewer91 &viewer) {
    addTool(*tools, refreshTool, &viewer, [this] {
        if (source)
            source->refill();
        read(pages->currentPage());
    });
    addTool(*tools, printTool, &viewer, [&viewer] { viewer.PrintReport(); });
    addTool(*tools, exportTool, &viewer, [&viewer] { viewer.ExportReport(); });
}

CRViewer91::CRViewer91(QWidget *parent) : QWidget(parent), d(std::make_unique<Private>()) {
    d->tools = new QToolBar(this);
    d->tools->setObjectName(QStringLiteral("tools"));
    d->tools->setIconSize(QSize(20, 20));
    d->pages = new PageView(this);
    d->tree = new QTreeWidget(this);
    d->tree->setObjectName(QStringLiteral("groups"));
    d->tree->setAccessibleName(tr("Groups"));
    d->tree->setHeaderHidden(true);
    d->tree->hide();
    d->addNavigation(*this);
    d->addZoom(*this);
    d->addFind(*this);
    d->addOutput(*this);
    auto *splitter = new QSplitter(this);
    splitter->addWidget(d->tree);
    splitter->addWidget(d->pages);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({240, 1000});
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(d->tools);
    layout->addWidget(splitter, 1);
    setFocusProxy(d->pages);
    d->showPlace();
    d->showFit();
}

CRViewer91::~CRViewer91() = default;

void CRViewer91::setReportSource(std::shared_ptr<report::Report> source) {
    d->source = std::move(source);
}

std::shared_ptr<report::Report> CRViewer91::ReportSource() const {
    return d->source;
}

void CRViewer91::ViewReport() {
    if (!d->source)
        throw Error(errors::ObjectNotSet, QStringLiteral("The viewer has no report."));
    d->findBox->clear();
    d->read(0);
}

int CRViewer91::pageCount() const {
    return d->document() ? d->document()->pageCount() : 0;
}

int CRViewer91::currentPage() const {
    return d->document() ? d->pages->currentPage() + 1 : 0;
}

QString CRViewer91::plainText() const {
    return d->document() ? d->document()->plainText() : QString();
}

bool CRViewer91::find(const QString &words) {
    d->findBox->setText(words);
    return d->pages->findNext(false);
}

bool CRViewer91::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    return d->pressInBox(static_cast<QLineEdit &>(*watched), static_cast<QKeyEvent &>(*event));
}

void CRViewer91::PrintReport() {
    if (d->document())
        print(*d->document(), d->pages->currentPage(), this);
}

void CRViewer91::ExportReport() {
    if (d->document())
        exportAsPdf(*d->document(), this);
}

} // namespace zel::viewer
