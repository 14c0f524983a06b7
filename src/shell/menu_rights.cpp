#include "shell/MDIForm1.h"
#include "shell/module1.h"

#include "platform/base/error.h"

namespace zel::shell {

void ApplyMenus() {
    MDIForm1 &frame = *MDIForm1::reference;
    frame.showPanel();
    OpenRs("Select Active From Menus Where Active='1'");
    if (gRs.RecordCount() == 0)
        throw Error(errors::ObjectNotSet, QString("Object variable or With block variable not set"));
    OpenRs("Select Menus,Active From Menus");
    gRs.MoveFirst();
    for (; !gRs.atEnd(); gRs.MoveNext())
        frame.setItemVisible(gRs.Fields("Menus").text(), gRs.Fields("Active").text() == "1");
}

} // namespace zel::shell
