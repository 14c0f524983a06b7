#include "shell/search_page.h"
#include "ui_search_page.h"

namespace zel::shell {

SearchPage::SearchPage(QWidget *parent) : QWidget(parent), ui(std::make_unique<Ui::SearchPage>()) {
    const QString name = objectName();
    ui->setupUi(this);
    setObjectName(name);
}

SearchPage::~SearchPage() = default;

bool SearchPage::criteria() const {
    return !ui->cmb_s_cri->isHidden();
}

void SearchPage::setCriteria(bool shown) {
    ui->lblCriterion->setVisible(shown);
    ui->cmb_s_cri->setVisible(shown);
}

QString SearchPage::valueName() const {
    return ui->txt_s_value->objectName();
}

void SearchPage::setValueName(const QString &name) {
    ui->txt_s_value->setObjectName(name);
}

QString SearchPage::listName() const {
    return ui->Msh->accessibleName();
}

void SearchPage::setListName(const QString &name) {
    ui->Msh->setAccessibleName(name);
}

QString SearchPage::emptyText() const {
    return ui->Msh->emptyText();
}

void SearchPage::setEmptyText(const QString &text) {
    ui->Msh->setEmptyText(text);
}

} // namespace zel::shell
