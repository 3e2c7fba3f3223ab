#include "screens/sounds.h"

#include <QApplication>
#include <QDataStream>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#ifdef _WIN32
#include <windows.h>
// Behind windows.h.
#include <mmsystem.h>
#endif

namespace bellmark {

namespace {

using std::chrono::milliseconds;

constexpr int rate = 22050;       // samples a second
constexpr double loudness = 0.4;  // of the largest amplitude
constexpr double ramp = 0.008;    // seconds in which a tone rises and falls

// They differ in pitch, number and direction, so that each is known without the others.
constexpr std::array armed{ToneStep{660, milliseconds(110)}, ToneStep{990, milliseconds(160)}};
constexpr std::array captured{ToneStep{1320, milliseconds(90)}};
constexpr std::array needsAnswer{ToneStep{520, milliseconds(140)}, ToneStep{0, milliseconds(70)},
                                 ToneStep{520, milliseconds(140)}, ToneStep{0, milliseconds(70)},
                                 ToneStep{390, milliseconds(240)}};

QByteArray Samples(std::span<const ToneStep> steps) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    for (const ToneStep& step : steps) {
        const double seconds = static_cast<double>(step.length.count()) / 1000;
        const int count = static_cast<int>(std::lround(seconds * rate));
        for (int i = 0; i < count; ++i) {
            const double time = static_cast<double>(i) / rate;
            const double rise = std::min({1.0, time / ramp, (seconds - time) / ramp});
            const double value = loudness * rise * std::sin(2 * std::numbers::pi * step.hertz * time);
            stream << static_cast<qint16>(std::lround(value * 32767));
        }
    }
    return bytes;
}

}  // namespace

QByteArray ToneFile(std::span<const ToneStep> steps) {
    constexpr quint32 formatLength = 16;
    constexpr quint16 plainNumbers = 1;
    constexpr quint16 channels = 1;
    constexpr quint16 sampleBytes = 2;
    const QByteArray samples = Samples(steps);
    const auto length = static_cast<quint32>(samples.size());
    QByteArray file;
    QDataStream stream(&file, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.writeRawData("RIFF", 4);
    stream << quint32(length + 36);
    stream.writeRawData("WAVEfmt ", 8);
    stream << formatLength << plainNumbers << channels << quint32(rate) << quint32(rate * sampleBytes) << sampleBytes
           << quint16(8 * sampleBytes);
    stream.writeRawData("data", 4);
    stream << length;
    return file + samples;
}

Sounds::Sounds() {
    for (const char* name : {"pw-play", "paplay", "aplay"}) {
        if (player_.isEmpty()) player_ = QStandardPaths::findExecutable(QLatin1String(name));
    }
}

void Sounds::Give(Signal signal) {
    switch (signal) {
        case Signal::Armed:
            return PlaySteps(armed);
        case Signal::Captured:
            return PlaySteps(captured);
        case Signal::NeedsAnswer:
            return PlaySteps(needsAnswer);
    }
}

void Sounds::Beep(int hertz, milliseconds length) {
    PlaySteps(std::array{ToneStep{hertz, length}});
}

void Sounds::PlaySteps(std::span<const ToneStep> steps) {
    if (!isOn_) return;
    const QByteArray bytes = ToneFile(steps);
    QString& name = files_[bytes];
    if (name.isEmpty()) {
        name = folder_.filePath(QStringLiteral("%1.wav").arg(files_.size()));
        QFile file(name);
        if (file.open(QIODevice::WriteOnly)) file.write(bytes);
    }
    Play(PathFromText(name.toStdString()));
}

void Sounds::Play(const Path& file) {
    if (!isOn_) return;
#ifdef _WIN32
    PlaySoundW(file.c_str(), nullptr, SND_FILENAME | SND_ASYNC | SND_NODEFAULT);
#else
    QProcess process;
    process.setProgram(player_);
    process.setArguments({QString::fromStdString(PathText(file))});
    // A player without a sound device complains and ends.
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    if (player_.isEmpty() || !process.startDetached()) QApplication::beep();
#endif
}

}  // namespace bellmark
