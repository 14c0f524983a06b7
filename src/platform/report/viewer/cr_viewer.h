#pragma once

#include "platform/report/report.h"

#include <QWidget>

namespace zel::viewer {

/// Shows a report page by page, with its own toolbar; the one widget of the viewer screen. Keys: PageUp,
/// PageDown, Home, End, Ctrl++ and Ctrl+-, Ctrl+F and F3, F5; they work while the focus is in it.
class CRViewer91 : public QWidget {
    Q_OBJECT
    Q_PROPERTY(int pageCount READ pageCount)
    Q_PROPERTY(int currentPage READ currentPage)
    Q_PROPERTY(QString plainText READ plainText)
public:
    explicit CRViewer91(QWidget *parent = nullptr);
    ~CRViewer91() override;

    /// What ViewReport() and refresh read; setting it alone shows nothing.
    void setReportSource(std::shared_ptr<report::Report> source);
    [[nodiscard]] std::shared_ptr<report::Report> ReportSource() const;
    /// Reads the report and shows its first page. Errors are those of report::Report::document().
    void ViewReport();

    [[nodiscard]] int pageCount() const;     ///< 0 before the first ViewReport()
    [[nodiscard]] int currentPage() const;   ///< from 1; 0 before the first ViewReport()
    [[nodiscard]] QString plainText() const; ///< of all pages, a form feed between them

    /// Finds the words from the current page on; every place of them is marked. Whether there is one.
    bool find(const QString &words);
    /// Asks for a printer and prints. What can't be printed or written is told in a box, and no error.
    void PrintReport();
    /// Asks for a file and writes a PDF; likewise.
    void ExportReport();

protected:
    /// In the boxes of the toolbar PageUp and PageDown turn pages too, and Esc leaves.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace zel::viewer
