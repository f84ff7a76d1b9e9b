// SPDX-License-Identifier: MIT
// The user picks one of the choices and any of the options.
#include "choices/ItemList.h"
#include "dialogs/TChoiceDlg.h"
#include "dialogs/TOptionsDlg.h"
#include "session/TessarineStubWindow.h"

namespace {

std::vector<OfferedItem> Offered(const std::vector<ListItem>& items) {
  std::vector<OfferedItem> offered;
  for (const ListItem& item : items) offered.push_back({item.name, item.tip});
  return offered;
}

}  // namespace

bool TessarineStubWindow::SelectChoiceAndOptions(std::string& choice, std::string& options) {
  return PickChoice(choice) && PickOptions(options);
}

bool TessarineStubWindow::PickChoice(std::string& choice) {
  if (fInstallChoices.empty()) return true;
  TChoiceDlg dialog;
  dialog.SetTitle(CustomLabel(dialog.Title(), LabelText(LabelId::ChoiceTitle)));
  const std::vector<ListItem> items = ParseItems(fInstallChoices);
  dialog.Offer(Offered(items));
  dialog.ShowModal();
  for (std::size_t i = 0; i < items.size(); ++i)
    if (dialog.ChoiceRadio[i].Value()) choice = dialog.ChoiceRadio[i].Caption();
  return dialog.fBtnName == "OKBtn";
}

bool TessarineStubWindow::PickOptions(std::string& options) {
  if (fInstallOptions.empty()) return true;
  TOptionsDlg dialog;
  dialog.SetTitle(CustomLabel(dialog.Title(), LabelText(LabelId::OptionsTitle)));
  const std::vector<ListItem> items = ParseItems(fInstallOptions);
  dialog.Offer(Offered(items));
  dialog.ShowModal();
  for (std::size_t i = 0; i < items.size(); ++i)
    if (dialog.OptionCheckBox[i].Value())
      options += (options.empty() ? "" : ",") + dialog.OptionCheckBox[i].Caption();
  return dialog.fBtnName == "OKBtn";
}
