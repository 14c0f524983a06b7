#include "shell/search.h"

#include "platform/base/number_text.h"
#include "platform/controls/combo_box.h"
#include "platform/controls/date_box.h"
#include "platform/controls/focus.h"
#include "platform/controls/text_box.h"
#include "shell/entry_screen.h"

#include <QLabel>

#include <algorithm>
#include <utility>

namespace zel::shell {

Search::Search(SearchTable table, const SearchControls &controls)
    : m_table(std::move(table)), m_controls(controls) {
    connect(m_controls.value, &controls::TextBox::changed, this, qOverload<>(&Search::run));
    connect(m_controls.value, &controls::TextBox::upOrDown, this,
            [this] { controls::SetFocus(m_controls.list); });
    if (m_controls.criterion) {
        connect(m_controls.criterion, &controls::ComboBox::changed, this, [this] {
            criterionChanged();
            if (m_table.criterionSearches)
                run();
        });
        connect(m_controls.criterion, &controls::ComboBox::clicked, this, &Search::criterionChanged);
    }
    if (m_controls.date)
        connect(m_controls.date, &controls::DateBox::changed, this, qOverload<>(&Search::run));
}

void Search::load() {
    if (!m_controls.criterion)
        return;
    const QSignalBlocker quiet(m_controls.criterion);
    for (const SearchTable::Criterion &criterion : m_table.criteria)
        m_controls.criterion->addItem(criterion.caption);
    m_controls.criterion->setCurrentIndex(0);
    criterionChanged();
}

void Search::criterionChanged() {
    const QString caption = m_controls.criterion->Text();
    const SearchTable::Criterion *criterion = find(caption);
    if (m_controls.echo)
        m_controls.echo->setText(caption);
    if (m_controls.date)
        m_controls.date->setVisible(criterion && criterion->searched != Searched::Text);
}

const SearchTable::Criterion *Search::find(const QString &caption) const {
    const auto found = std::ranges::find_if(m_table.criteria, [&](const SearchTable::Criterion &known) {
        return caption == QLatin1String(known.caption);
    });
    return found == m_table.criteria.end() ? nullptr : &*found;
}

void Search::run(const QString &criterion) {
    fillGrid(*m_controls.list, statement(find(criterion)), m_table.columns,
             m_table.headingsStay ? Headings::Stay : Headings::Go);
}

Sql Search::statement(const SearchTable::Criterion *criterion) const {
    const bool all = m_table.allWithoutValue && m_controls.value->text().isEmpty();
    if (all || !criterion || criterion->before.text().empty())
        return m_table.all;
    if (criterion->searched == Searched::Text)
        return criterion->before + m_controls.value->text() + criterion->behind;
    const QDate date = m_controls.date->Value();
    return criterion->searched == Searched::PaddedDate
               ? criterion->before + sqlDate(date) + criterion->behind
               : criterion->before + date.year() + "-" + date.month() + "-" + date.day() + criterion->behind;
}

void Search::run() {
    run(m_controls.criterion ? m_controls.criterion->Text() : QString());
}

} // namespace zel::shell
