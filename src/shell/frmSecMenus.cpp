#include "shell/frmSecMenus.h"
#include "ui_frmSecMenus.h"

#include "platform/controls/look.h"
#include "shell/module1.h"
#include "shell/status_words.h"

#include <QStyle>

namespace zel::shell {

namespace {

void setBold(QCheckBox &box, bool bold) {
    QFont font; // of this font only the weight is the box's own
    font.setBold(bold);
    box.setFont(font);
}

/// A ticked box is bold and wider: the screen has room for all of them from the start. Asks the box for no
/// size of its own, since that would fix its font before the screen stands in its window.
int boldWidth(const QCheckBox &box) {
    QFont bold = box.font();
    bold.setBold(true);
    const QStyle &style = *box.style();
    return QFontMetrics(bold).horizontalAdvance(box.text()) + style.pixelMetric(QStyle::PM_IndicatorWidth) +
           2 * style.pixelMetric(QStyle::PM_CheckBoxLabelSpacing);
}

} // namespace

frmSecMenus::frmSecMenus() : Form(Kind::OwnSize), ui(std::make_unique<Ui::frmSecMenus>()) {
    ui->setupUi(this);
    ui->cmdSave->setIcon(controls::icon("save"));
    ui->Command1->setIcon(controls::icon("exit"));
    for (std::size_t i = 0; i < m_boxes.size(); ++i) {
        QCheckBox *box = findChild<QCheckBox *>("Check" + QString::number(i + 1));
        m_boxes[i] = box;
        connect(box, &QCheckBox::toggled, this, [box](bool ticked) { setBold(*box, ticked); });
    }
    connectKeys(*this, keys());
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
    say("Menu rights saved");
}

void frmSecMenus::Command1_Click() {
    Unload();
    reference.clear();
}

} // namespace zel::shell
