// SPDX-License-Identifier: MIT
#include "package/Labels.h"

namespace {

constexpr NamedLabel kNamed[] = {
    {LabelId::CannotWrite, "cannotWrite"},
    {LabelId::Quit, "quit"},
    {LabelId::Install, "install"},
    {LabelId::Cancel, "cancel"},
    {LabelId::Ok, "ok"},
    {LabelId::Agree, "agree"},
    {LabelId::Info, "info"},
    {LabelId::AgreementTitle, "agreementTitle"},
    {LabelId::InfoTitle, "infoTitle"},
    {LabelId::ConfirmTitle, "confirmTitle"},
    {LabelId::TargetExists, "targetExists"},
    {LabelId::DeleteTarget, "deleteTarget"},
    {LabelId::Failed, "failed"},
    {LabelId::FolderTitle, "folderTitle"},
    {LabelId::FolderSelect, "folderSelect"},
    {LabelId::NextDisc, "nextDisc"},
    {LabelId::PatchFailed, "patchFailed"},
    {LabelId::InProgress, "inProgress"},
    {LabelId::PleaseWait, "pleaseWait"},
    {LabelId::InstallingOptions, "installingOptions"},
    {LabelId::ChoiceTitle, "choiceTitle"},
    {LabelId::OptionsTitle, "optionsTitle"},
    {LabelId::PreInstallNotesTitle, "preInstallNotesTitle"},
    {LabelId::PostInstallNotesTitle, "postInstallNotesTitle"},
};

}  // namespace

std::span<const NamedLabel> NamedLabels() {
  return kNamed;
}
