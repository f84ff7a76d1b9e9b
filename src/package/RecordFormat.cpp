// SPDX-License-Identifier: MIT
#include "package/RecordFormat.h"

namespace {

using R = InstallerRecord;

constexpr RecordField kDataFields[] = {
    {1, "timeStamp", &R::fTimeStamp},
    {2, "applicationFolder", &R::fApplicationFolder},
    {3, "executeAfter", &R::fExecuteAfterName},
    {4, "logo", PictureMember{&R::fLogoPixelStr, &R::fLogoWidth, &R::fLogoHeight}},
    {6, "picture", PictureMember{&R::fPicturePixelStr, &R::fPictureWidth, &R::fPictureHeight}},
    {7, "promptToReplace", &R::fPromptToReplace},
    {8, "executeBefore", &R::fExecuteBeforeName},
    {9, "background", PictureMember{&R::fBackgroundPixelStr, &R::fBackgroundWidth, &R::fBackgroundHeight}},
    {10, "encryptionLength", &R::fEncryptionLen},
    {11, "centerMessage", &R::fCenterMessage}};

constexpr RecordField kTextDataFields[] = {{1, "agreement", NoteMember{&R::fAgreement}},
                                           {2, "message", &R::fMessage},
                                           {3, "url.address", &R::fURLActual},
                                           {4, "url.text", &R::fURLDisplayed},
                                           {5, "info", NoteMember{&R::fInfo}},
                                           {6, "labels", &R::fLabels},
                                           {7, "targetFolder", &R::fTargetFolder},
                                           {8, "copyright", &R::fCopyright},
                                           {9, "windowTitle", &R::fWindowTitle},
                                           {13, "patch", &R::fInstallationPatch},
                                           {22, "choices", &R::fInstallChoices},
                                           {23, "options", &R::fInstallOptions},
                                           {24, "minOS", &R::fMinOS},
                                           {25, "minRAM", &R::fMinRAM},
                                           {26, "completionURL", &R::fCompletionURL},
                                           {27, "preInstallNotes", NoteMember{&R::fPreInstallNotes}},
                                           {28, "postInstallNotes", NoteMember{&R::fPostInstallNotes}},
                                           {29, "actions", &R::fPostCopy},
                                           {30, "cleanup.mode", &R::fCleanup}};

}  // namespace

const RecordFormat kDataFormat{"$|~", 12, true, kDataFields};
const RecordFormat kTextDataFormat{"|#|", 30, false, kTextDataFields};
