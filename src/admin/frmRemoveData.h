#pragma once

#include "platform/controls/form.h"
#include "shell/screen_keys.h"

#include <memory>

class QGridLayout;

namespace zel::admin {

namespace Ui {
class frmRemoveData;
}
struct Removal;

/// Empties the database table by table. It knows no relations: each button deletes what it names, and what a
/// voucher's button deletes is every kind of voucher of the dates.
class frmRemoveData : public controls::Form {
    Q_OBJECT
public:
    inline static controls::FormReference<frmRemoveData> reference;
    [[nodiscard]] static shell::Shortcuts keys() { return shell::CloseAlone; }

    frmRemoveData();
    ~frmRemoveData() override;

protected:
    void Form_Load() override;
    void Form_Unload() override;

private:
    void addRow(QGridLayout &rows, const Removal &removal);
    void remove(const Removal &removal);

    std::unique_ptr<Ui::frmRemoveData> ui;
};

} // namespace zel::admin
