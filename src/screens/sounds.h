#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>
#include <map>
#include <span>

#include "platform/machine.h"

namespace bellmark {

/// What the operator hears without looking.
enum class Signal { Armed, Captured, NeedsAnswer };

struct ToneStep {
    int hertz = 0;  ///< 0 is silence
    std::chrono::milliseconds length{};
};

/// A sound file (WAV, 16 bits, one channel) of sine tones, one after the other, without clicks between them.
QByteArray ToneFile(std::span<const ToneStep> steps);

/// Sounds through the desktop's own player, all of them off by one switch. Without a player the bell stands in; without
/// a sound device nothing is heard, and nothing fails.
class Sounds : public Sound {
  public:
    Sounds();

    void SetOn(bool on) { isOn_ = on; }
    bool IsOn() const { return isOn_; }

    void Give(Signal signal);

    void Play(const Path& file) override;
    void Beep(int hertz, std::chrono::milliseconds length) override;

  private:
    void PlaySteps(std::span<const ToneStep> steps);

    bool isOn_ = true;
    QString player_;  ///< empty where there is none
    QTemporaryDir folder_;
    std::map<QByteArray, QString> files_;  ///< written ones, by content
};

}  // namespace bellmark
