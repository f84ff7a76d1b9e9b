// SPDX-License-Identifier: MIT
#include "platform/Timer.h"

#include <QTimer>

#include "platform/Machine.h"

class NativeTimer : public QTimer {
 public:
  std::function<void()> fAction;
};

Timer::Timer(int period, Mode mode) : fNative(std::make_unique<NativeTimer>()) {
  fNative->setInterval(Machine::Current().TimerPeriod(period));
  QObject::connect(fNative.get(), &QTimer::timeout, [this] {
    if (fNative->fAction) fNative->fAction();
  });
  SetMode(mode);
}

Timer::~Timer() = default;

void Timer::SetMode(Mode mode) {
  fNative->setSingleShot(mode == Mode::Single);
  if (mode == Mode::Off)
    fNative->stop();
  else
    fNative->start();
}

void Timer::OnAction(std::function<void()> action) {
  fNative->fAction = std::move(action);
}
