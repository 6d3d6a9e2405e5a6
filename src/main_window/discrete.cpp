// Discrete mode: one row per distinct value, ticked values stay in the sample.
#include "analysis_state.h"
#include "main_form.h"

namespace qv {

void MainForm::OptionDiscrete_Click() {}
void MainForm::UniqueValuesForCols(std::span<const double>) {}
void MainForm::Check1_Click() {}
bool MainForm::LoadDiscreteSample() { return false; }
void MainForm::TabulateDiscrete() {}

}  // namespace qv
