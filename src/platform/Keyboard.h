// SPDX-License-Identifier: MIT
// Which keys are held down at this moment.
#pragma once

namespace Keyboard {

/// The Mac's virtual key code of F1.
inline constexpr int kF1 = 122;

/// Is the key down? `keyCode` is a virtual key code of the Mac; F1 is followed, any other code is false.
/// A program learns of keys only while one of its windows has the keyboard: what is held when the last one
/// loses it counts as released, until it is pressed anew.
bool AsyncKeyDown(int keyCode);

}  // namespace Keyboard
