#pragma once

#include "platform/report/report.h"

#include <QWidget>

namespace zel::viewer {

/// Shows a report page by page, with its own toolbar; the one widget of the viewer screen.
class CRViewer91 : public QWidget {
    Q_OBJECT
    Q_PROPERTY(int pageCount READ pageCount)
    Q_PROPERTY(QString plainText READ plainText)
public:
    explicit CRViewer91(QWidget *parent = nullptr);
    ~CRViewer91() override;

    /// What ViewReport() and refresh read; setting it alone shows nothing.
    void setReportSource(std::shared_ptr<report::Report> source);
    [[nodiscard]] std::shared_ptr<report::Report> ReportSource() const;
    /// Reads the report and shows its first page. Errors are those of report::Report::document().
    void ViewReport();

    [[nodiscard]] int pageCount() const;      ///< 0 before the first ViewReport()
    [[nodiscard]] QString plainText() const;  ///< of all pages, a form feed between them

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace zel::viewer
