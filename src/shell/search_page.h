#pragma once

#include <QWidget>

#include <memory>

namespace zel::shell {

namespace Ui {
class SearchPage;
}

/// The search tab of the master-data screens: cmb_s_cri, txt_s_value and the list Msh. A .ui file places it
/// as a tab's page and says what differs.
class SearchPage : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool criteria READ criteria WRITE setCriteria)
    Q_PROPERTY(QString valueName READ valueName WRITE setValueName)
    Q_PROPERTY(QString listName READ listName WRITE setListName)
    Q_PROPERTY(QString emptyText READ emptyText WRITE setEmptyText)
public:
    explicit SearchPage(QWidget *parent = nullptr);
    ~SearchPage() override;

    /// Whether there is a criterion to choose.
    [[nodiscard]] bool criteria() const;
    void setCriteria(bool shown);
    /// objectName of the box with the search value.
    [[nodiscard]] QString valueName() const;
    void setValueName(const QString &name);
    /// What the list shows, for who can't see it.
    [[nodiscard]] QString listName() const;
    void setListName(const QString &name);
    /// What stands in place of a list without rows.
    [[nodiscard]] QString emptyText() const;
    void setEmptyText(const QString &text);

private:
    std::unique_ptr<Ui::SearchPage> ui;
};

} // namespace zel::shell
