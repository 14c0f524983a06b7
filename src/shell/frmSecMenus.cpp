#include "shell/frmSecMenus.h"
#include "ui_frmSecMenus.h"

#include "shell/module1.h"

#include <algorithm>

namespace zel::shell {

namespace {

void setBold(QCheckBox &box, bool bold) {
    QFont font = box.font();
    font.setBold(bold);
    box.setFont(font);
}

/// A ticked box is bold and wider: the screen has room for all of them from the start.
int boldWidth(const QCheckBox &box) {
    QFont bold = box.font();
    bold.setBold(true);
    const int more =
        QFontMetrics(bold).horizontalAdvance(box.text()) - box.fontMetrics().horizontalAdvance(box.text());
    return box.sizeHint().width() + std::max(more, 0);
}

} // namespace

frmSecMenus::frmSecMenus() : ui(std::make_unique<Ui::frmSecMenus>()) {
    ui->setupUi(this);
    for (std::size_t i = 0; i < m_boxes.size(); ++i) {
        QCheckBox *box = findChild<QCheckBox *>("Check" + QString::number(i + 1));
        m_boxes[i] = box;
        connect(box, &QCheckBox::toggled, this, [box](bool ticked) { setBold(*box, ticked); });
    }
    connect(ui->cmdSave, &QAbstractButton::clicked, this, &frmSecMenus::cmdSave_Click);
    connect(ui->Command1, &QAbstractButton::clicked, this, &frmSecMenus::Command1_Click);
}

frmSecMenus::~frmSecMenus() = default;

void frmSecMenus::Form_Load() {
    for (QCheckBox *box : m_boxes)
        box->setMinimumWidth(boldWidth(*box));
    OpenMenus();
}

void frmSecMenus::Form_Unload() {
    ApplyMenus();
}

void frmSecMenus::OpenMenus() {
    OpenRs("Select * From Menus");
    if (gRs.RecordCount() > 0)
        gRs.MoveFirst();
    for (; !gRs.atEnd(); gRs.MoveNext())
        for (QCheckBox *box : m_boxes)
            if (box->text() == gRs.Fields("Menus").text())
                box->setChecked(gRs.Fields("Active").text() == "1");
}

void frmSecMenus::cmdSave_Click() {
    gCon.Execute("Delete From Menus");
    OpenRs("Select * From Menus");
    for (const QCheckBox *box : m_boxes) {
        gRs.AddNew();
        gRs.Fields("Menus") = box->text();
        gRs.Fields("Active") = box->isChecked() ? 1 : 0;
        gRs.Update();
    }
}

void frmSecMenus::Command1_Click() {
    Unload();
    reference.clear();
}

} // namespace zel::shell
