// The chart's view: counts or percentages, direction and gap.
#include "analysis_state.h"
#include "main_form.h"

namespace qv {

void MainForm::OptionButton5_Click() {}
void MainForm::OptionButton6_Click() {}
void MainForm::Option1_Click() {}
void MainForm::Option2_Click() {}
void MainForm::SlideGap_Change() {}
void MainForm::OptionContinuous_Click() {}

}  // namespace qv
