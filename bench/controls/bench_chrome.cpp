// Repainting the chrome: a title bar across the main window (925 x 32) and a "?" button and
// a captioned button, each painted whole into an image of its size, offscreen.
#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>

#include "themed_button.h"
#include "titel_bar.h"

namespace {

void BM_TitelBarRepaint(benchmark::State& state) {
  QWidget window;
  window.setFixedSize(static_cast<int>(state.range(0)), 200);
  qv::TitelBar* bar = qv::TitelBar::Install(&window, false);
  const qreal dpr = static_cast<qreal>(state.range(1));
  QImage image(bar->size() * dpr, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(dpr);
  for (auto _ : state) {
    QPainter p(&image);
    bar->paintBar(p, bar->size());
    p.end();
    benchmark::DoNotOptimize(image.constBits());
  }
}

void BM_ThemedButtonRepaint(benchmark::State& state) {
  QWidget window;
  auto* button = new qv::ThemedButton(state.range(0) ? QStringLiteral("Test normality") : QStringLiteral("?"), &window);
  button->setButtonThemeType(1);
  button->setBackColor(QColor(0xC0, 0xC0, 0xC0));
  button->resize(state.range(0) ? QSize(140, 30) : QSize(20, 19));
  const qreal dpr = static_cast<qreal>(state.range(1));
  QImage image(button->size() * dpr, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(dpr);
  for (auto _ : state) {
    image.fill(Qt::transparent);
    button->render(&image);
    benchmark::DoNotOptimize(image.constBits());
  }
}

}  // namespace

// range(0): bar width; range(1): pixel ratio.
BENCHMARK(BM_TitelBarRepaint)->Args({925, 1})->Args({925, 2})->Unit(benchmark::kMicrosecond);
// range(0): 0 the "?" button, 1 a captioned one; range(1): pixel ratio.
BENCHMARK(BM_ThemedButtonRepaint)->Args({0, 1})->Args({1, 1})->Args({1, 2})->Unit(benchmark::kMicrosecond);
