#include "platform/controls/form_life.h"

#include "platform/controls/application.h"

#include <QScopeGuard>

namespace zel::controls {

FormLife *FormLife::s_active = nullptr;
bool FormLife::s_closing = false;

namespace {

QList<FormLife *> &loadedForms() {
    static QList<FormLife *> forms;
    return forms;
}

} // namespace

FormLife::FormLife() = default;

FormLife::~FormLife() {
    discard();
}

const QList<FormLife *> &FormLife::loaded() {
    return loadedForms();
}

bool FormLife::isShown() const {
    return m_state == State::Loaded && const_cast<FormLife *>(this)->shell()->isVisible();
}

/// Takes the form off the books; nothing of it runs any more.
void FormLife::discard() {
    m_state = State::Unloaded;
    loadedForms().removeAll(this);
    if (s_active == this)
        s_active = nullptr;
}

void FormLife::Load() {
    if (m_state != State::Created)
        return;
    m_state = State::Loaded;
    loadedForms() << this;
    auto failed = qScopeGuard([this] {
        discard();
        formWidget()->deleteLater();
    });
    Form_Load();
    failed.dismiss();
}

void FormLife::Show() {
    Load();
    if (isLoaded())
        bringForward(false);
}

void FormLife::ShowMaximized() {
    Load();
    if (isLoaded())
        bringForward(true);
}

void FormLife::Hide() {
    if (isLoaded())
        goOutOfSight();
}

void FormLife::goOutOfSight() {
    const bool wasActive = s_active == this;
    if (wasActive)
        s_active = nullptr;
    shell()->hide();
    if (wasActive && !s_closing)
        yieldActivity();
}

void FormLife::Unload() {
    if (m_state != State::Loaded)
        return;
    m_state = State::Unloading;
    unloadOthers();
    Form_Unload();
    loadedForms().removeAll(this);
    shell()->deleteLater();
    goOutOfSight();
    discard();
    Application::endWithoutForms();
}

void FormLife::unloadScreens() {
    s_closing = true;
    const auto opened = qScopeGuard([] { s_closing = false; });
    const QList<FormLife *> forms = loadedForms();
    for (FormLife *form : forms) {
        if (loadedForms().contains(form) && form->isChild())
            form->Unload();
    }
}

void FormLife::becameActive() {
    if (!isLoaded() || s_closing || s_active == this)
        return;
    s_active = this;
    Form_Activate();
}

} // namespace zel::controls
