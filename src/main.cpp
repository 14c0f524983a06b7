#include "menu_screens.h"

#include "platform/controls/application.h"
#include "shell/module1.h"

int main(int argc, char *argv[]) {
    zel::controls::Application application(argc, argv);
    zel::shell::setScreens(zel::menuScreens());
    return application.run(zel::shell::Main);
}
