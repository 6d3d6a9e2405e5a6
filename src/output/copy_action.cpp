#include "copy_action.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QPixmap>
#include <QScreen>
#include <QWidget>

#ifdef QV_HAVE_MULTIMEDIA
#include <QAudioDevice>
#include <QAudioFormat>
#include <QAudioSink>
#include <QBuffer>
#include <QFile>
#include <QMediaDevices>
#include <QtEndian>
#include <optional>
#endif

namespace qv {

namespace {

// The window with its frame as the screen shows it, or a null pixmap where the screen
// cannot be read (offscreen, Wayland).
QPixmap GrabFromScreen(QWidget* window) {
  const QString platform = QGuiApplication::platformName();
  if (!window->isVisible() || window->isMinimized() || platform == "offscreen" || platform == "minimal")
    return {};
  QScreen* screen = window->screen();
  if (!screen) return {};
  const QRect frame = window->frameGeometry();
  const QRect shown = screen->geometry();
  return screen->grabWindow(0, frame.x() - shown.x(), frame.y() - shown.y(), frame.width(), frame.height());
}

#ifdef QV_HAVE_MULTIMEDIA
struct Wave {
  QAudioFormat format;
  QByteArray samples;
};

// A PCM WAV file: its format chunk and its samples; nothing for anything else.
std::optional<Wave> ReadWave(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  const QByteArray all = file.readAll();
  if (all.size() < 12 || all.first(4) != "RIFF" || all.sliced(8, 4) != "WAVE") return std::nullopt;
  const auto* bytes = reinterpret_cast<const uchar*>(all.constData());
  Wave wave;
  bool haveFormat = false;
  for (qsizetype at = 12; at + 8 <= all.size();) {
    const QByteArray id = all.sliced(at, 4);
    const qsizetype size = qFromLittleEndian<quint32>(bytes + at + 4);
    const qsizetype body = at + 8;
    if (size > all.size() - body) break;
    if (id == "fmt " && size >= 16) {
      const quint16 tag = qFromLittleEndian<quint16>(bytes + body);
      const quint16 channels = qFromLittleEndian<quint16>(bytes + body + 2);
      const quint32 rate = qFromLittleEndian<quint32>(bytes + body + 4);
      const quint16 bits = qFromLittleEndian<quint16>(bytes + body + 14);
      if (tag != 1 || channels == 0 || rate == 0) return std::nullopt;
      if (bits == 8) wave.format.setSampleFormat(QAudioFormat::UInt8);
      else if (bits == 16) wave.format.setSampleFormat(QAudioFormat::Int16);
      else if (bits == 32) wave.format.setSampleFormat(QAudioFormat::Int32);
      else return std::nullopt;
      wave.format.setChannelCount(channels);
      wave.format.setSampleRate(static_cast<int>(rate));
      haveFormat = true;
    } else if (id == "data") {
      wave.samples = all.sliced(body, size);
    }
    at = body + size + (size & 1);
  }
  if (!haveFormat || wave.samples.isEmpty()) return std::nullopt;
  return wave;
}
#endif

}  // namespace

void SendPrintScreen(QWidget* window) {
  if (!window) window = QApplication::activeWindow();
  if (!window) return;
  window = window->window();
  QPixmap image = GrabFromScreen(window);
  if (image.isNull()) image = window->grab();
  if (!image.isNull()) QGuiApplication::clipboard()->setPixmap(image);
}

// Beside the program in a build tree; in share/quantavue when installed.
QString CopySoundPath() {
  const QString dir = QCoreApplication::applicationDirPath();
  const QString beside = dir + "/" + kCopySoundFile;
  const QString installed = dir + "/../share/quantavue/" + kCopySoundFile;
  if (!QFileInfo::exists(beside) && QFileInfo::exists(installed)) return QDir::cleanPath(installed);
  return beside;
}

void PlayCopySound() {
#ifdef QV_HAVE_MULTIMEDIA
  // The file is read here and handed to an audio sink that plays it on its own. (Qt's
  // QSoundEffect decodes on a thread of a global cache that can deadlock at exit when a
  // program ends while a sound is still loading.)
  static std::optional<Wave> wave;
  if (!wave) wave = ReadWave(CopySoundPath());
  if (!wave) return;
  const QAudioDevice device = QMediaDevices::defaultAudioOutput();
  if (device.isNull() || !device.isFormatSupported(wave->format)) return;
  auto* sink = new QAudioSink(device, wave->format, QCoreApplication::instance());
  auto* buffer = new QBuffer(sink);
  buffer->setData(wave->samples);
  buffer->open(QIODevice::ReadOnly);
  // Played out or stopped: the sink goes, and its buffer with it.
  QObject::connect(sink, &QAudioSink::stateChanged, sink, [sink](QAudio::State state) {
    if (state == QAudio::IdleState) sink->stop();
    else if (state == QAudio::StoppedState) sink->deleteLater();
  });
  sink->start(buffer);
  if (sink->error() != QAudio::NoError) sink->deleteLater();
#endif
}

}  // namespace qv
