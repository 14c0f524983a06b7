#pragma once

#include "platform/report/definition/font.h"
#include "platform/report/formula/expression.h"

#include <QColor>
#include <QImage>
#include <QMarginsF>
#include <QSizeF>
#include <QString>

#include <optional>
#include <variant>
#include <vector>

namespace zel::report {

enum class Align { Left, Center, Right };

struct ColumnDefinition {
    QString name;
    Kind kind = Kind::Text;
};

/// A table joined as Sum gives no rows: its numbers are sums over those of its rows that `on` ties to a row,
/// Null where there is none.
enum class Join { None, Inner, Left, Sum };

/// A table that a report reads. The first one and those joined to it give the rows; each other, joined to
/// nothing, gives one row for the whole report, looked up first.
struct TableDefinition {
    QString name;   ///< what fields call it
    QString source; ///< the table of the catalog; often the same
    Join join = Join::None;
    ExpressionPtr on;    ///< of a joined table
    ExpressionPtr where; ///< of a table that is looked up: its own condition
    std::vector<ColumnDefinition> columns;
};

struct FormulaDefinition {
    QString name;
    std::string text;
    ExpressionPtr expression;
};

/// A sum, a count or the like over a group's rows or over all. A running one stands at the current row.
struct TotalDefinition {
    enum class Function { Sum, Min, Max, Count, Groups };
    QString name;
    Function function = Function::Sum;
    ExpressionPtr of; ///< of all but Groups; Count counts what is not Null, without `of` every row
    int counted = -1; ///< of Groups: whose instances are counted, but for a Null one
    int group = -1;   ///< -1: over the whole report
    bool running = false;
};

struct ParameterDefinition {
    QString name;
    Kind kind = Kind::Number;
};

struct SortDefinition {
    ExpressionPtr by;
    bool descending = false;
};

struct StyleDefinition {
    QString name;
    FontPtr font;
    Align align = Align::Left;
    QString picture; ///< of numbers: "##,###0.00"; none: plain
    QString dateFormat = QStringLiteral("dd/MM/yyyy");
    std::optional<QString> zero; ///< what stands for 0
};

/// A placed text or field. Lengths in millimetres from the band's upper left corner, within the page's
/// margins.
struct FieldDefinition {
    double x = 0, y = 0, width = 0;
    int style = 0;
    QString literal;          ///< of a text
    ExpressionPtr expression; ///< of a field
    ExpressionPtr when;       ///< shown only when this holds
    bool grow = false;        ///< wraps, and makes its band as high as it needs; else cut with an ellipsis
    bool follow = false; ///< behind the last line of the field before it, where it fits; else grows, lower
    bool shrink = false; ///< a long text is set smaller before it is cut, as numbers always are
};

struct LineDefinition {
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    double thickness = 0.15;
    QColor color = Qt::black;
    bool toFoot = false; ///< y2 follows the foot of a band that grows
    ExpressionPtr when;
};

struct BoxDefinition {
    QRectF rect;
    double thickness = 0.15;
    QColor color = Qt::black;
    QColor fill = Qt::transparent;
    ExpressionPtr when;
};

struct ImageDefinition {
    QRectF rect;
    std::shared_ptr<const QImage> image;
};

/// Where a sub-report's bands are stacked; the band becomes as high as they need.
struct SubreportPlace {
    double x = 0, y = 0;
    int subreport = -1;
    ExpressionPtr when;
};

using ItemDefinition =
    std::variant<FieldDefinition, LineDefinition, BoxDefinition, ImageDefinition, SubreportPlace>;

struct BandDefinition {
    double height = 0;
    std::vector<ItemDefinition> items;
    ExpressionPtr when;   ///< left out unless this holds
    bool newPage = false; ///< begins a page
    bool bottom = false;  ///< a report footer that stands at the foot of the last page
    bool fixed = true;    ///< nothing in it grows
};

struct GroupDefinition {
    QString name;
    ExpressionPtr by;
    ExpressionPtr title; ///< of the group tree; `by` if there is none
    bool descending = false;
    bool repeat = false;  ///< its headers stand again on a page that begins within it
    bool keep = false;    ///< goes to a new page as a whole, if one page can hold it
    bool newPage = false; ///< each instance but the first begins a page
    std::vector<BandDefinition> headers;
    std::vector<BandDefinition> footers;
};

struct Definition;

/// How rows of a sub-report belong to rows of its report: the two values are equal.
struct LinkDefinition {
    ExpressionPtr outer;
    ExpressionPtr inner;
};

struct SubreportDefinition {
    QString name;
    std::shared_ptr<Definition> definition;
    std::vector<LinkDefinition> links; ///< none: the same rows wherever it is placed
};

struct Definition {
    QString name;
    QString title;
    bool hasImages = false;
    bool blankWhenEmpty = false; ///< no row: one blank page, without headers and footers
    QSizeF pageSize{210, 297};
    QMarginsF margins{15, 12, 15, 12};
    double drawn =
        0; ///< the width for which items tell their places, which fit themselves to the page's; 0: the page's
    std::vector<StyleDefinition> styles; ///< the first is the default
    std::vector<TableDefinition> tables;
    std::vector<ParameterDefinition> parameters;
    std::vector<FormulaDefinition> formulas;
    std::vector<TotalDefinition> totals;
    std::vector<GroupDefinition> groups; ///< outermost first
    std::vector<SortDefinition> sort;    ///< within the innermost group
    ExpressionPtr where;                 ///< the definition's own selection
    std::vector<ExpressionPtr> linked;   ///< a sub-report's side of its links
    std::vector<SubreportDefinition> subreports;
    std::vector<BandDefinition> reportHeaders, pageHeaders, details, reportFooters, pageFooters;

    [[nodiscard]] double bodyWidth() const { return pageSize.width() - margins.left() - margins.right(); }
    [[nodiscard]] double bodyHeight() const { return pageSize.height() - margins.top() - margins.bottom(); }
    [[nodiscard]] int subreport(const QString &name) const; ///< case ignored; -1 when there is none
    [[nodiscard]] int formula(const QString &name) const;
    [[nodiscard]] int group(const QString &name) const;
    [[nodiscard]] int table(const QString &name) const;
};

/// Resolves a parsed formula's names in a definition and checks its kinds; sums and counts in it become
/// totals of the definition. FormulaError: 207 for an unknown name, 13 for a kind that doesn't fit, 8144 for
/// arguments.
[[nodiscard]] ExpressionPtr bind(const std::shared_ptr<Expression> &parsed, Definition &definition);

/// Reads a definition file, unless it is as it was when it was last read. Error 53 when there is none, 54
/// "FILE:LINE:COLUMN: what" when it is refused.
[[nodiscard]] std::shared_ptr<const Definition> readDefinition(const QString &path);
/// The same from text; `fileName` stands in the errors, included files and images lie in `folder`.
[[nodiscard]] std::shared_ptr<Definition> readDefinition(const QByteArray &xml, const QString &fileName,
                                                         const QString &folder = {});

/// Values of the parameters, in the definition's order.
using Parameters = std::vector<Value>;

} // namespace zel::report
