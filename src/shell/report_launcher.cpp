#include "shell/report_launcher.h"

#include "platform/report/report.h"
#include "platform/report/viewer/cr_viewer.h"
#include "shell/frmVeiwer.h"
#include "shell/module1.h"

namespace zel::shell {

ReportLauncher::ReportLauncher() = default;
ReportLauncher::~ReportLauncher() = default;

void ReportLauncher::OpenReport(const QString &file) {
    m_report = report::Application(gCon).OpenReport(applicationPath() + "/" + file);
}

void ReportLauncher::prepare(const ReportSettings &settings) {
    const bool fixed = settings.logon == Logon::Fixed;
    report::Table &table = m_report->Database().Tables().Item(1);
    table.ConnectionProperties("User ID").Value = fixed ? QString("sa") : gUserName;
    table.ConnectionProperties("Password").Value = fixed ? QString() : gPassword;
    int place = 0;
    for (const Value &value : settings.parameters)
        m_report->ParameterFields(++place).CurrentValue = value;
    m_report->EnableParameterPrompting = settings.prompting;
    if (settings.selection)
        m_report->RecordSelectionFormula = *settings.selection;
    for (const ReportSettings::Formula &formula : settings.formulas)
        m_report->FormulaFields(formula.name).Text = formula.text;
    for (const ReportSettings::SubReport &sub : settings.subReports)
        m_report->OpenSubreport(sub.name).RecordSelectionFormula = sub.selection;
}

void ReportLauncher::view() {
    frmVeiwer &viewer = *frmVeiwer::reference;
    viewer.setWindowTitle(QString());
    viewer.CRViewer91()->setReportSource(m_report);
    viewer.CRViewer91()->ViewReport();
    viewer.ShowMaximized();
}

void ReportLauncher::print(const QString &file, const ReportSettings &settings) {
    OpenReport(file);
    prepare(settings);
    view();
}

} // namespace zel::shell
