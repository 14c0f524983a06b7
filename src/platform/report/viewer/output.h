#pragma once

class QWidget;

namespace zel::report {
class Document;
}

/// What the viewer's tools do with a report beside showing it. What can't be printed or written is told in a
/// box before `window`, and no error.
namespace zel::viewer {

/// Asks for a printer and for which pages; `currentPage` from 0.
void print(const report::Document &document, int currentPage, QWidget *window);
/// Asks for a file.
void exportAsPdf(const report::Document &document, QWidget *window);

} // namespace zel::viewer
