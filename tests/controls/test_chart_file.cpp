// Chart files: every chart in every format at the size asked, the refusals that leave no
// file behind, and the right-click menu that leads there.
#include <gtest/gtest.h>

#include <QAction>
#include <QContextMenuEvent>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>
#include <qcustomplot.h>

#include <set>
#include <vector>

#include "bar_chart.h"
#include "chart_file.h"
#include "plotter.h"
#include "xy_chart.h"

namespace qv {
namespace {

// One chart of each kind with a little data, on screen at 480 x 300.
struct Charts {
  BarChart bar;
  XYChart xy;
  Plotter plotter;
  Charts() {
    bar.setBars({{"01", "[0, 10)", QColor(), 3}, {"02", "[10, 20)", QColor(Qt::red), 5},
                 {"03", "[20, 30)", QColor(), 2}});
    bar.setScaleTop(5);
    const std::vector<double> x{0, 0.25, 0.5, 0.75, 1}, y{0, 20, 45, 80, 100};
    ChartCurve line;
    line.Key = "Main";
    line.Color = 0xFF0000;
    xy.addCurve(line);
    xy.setCurveData("Main", x.size(), x, y);
    PlotterCurve lie;
    lie.Name = lie.Key = "Lie";
    plotter.setXBounds(0, 1);
    plotter.addCurve(lie);
    plotter.setCurveData("Lie", x.size(), x, y);
    plotter.enableCursor(true);
    for (QWidget* w : std::initializer_list<QWidget*>{&bar, &xy, &plotter}) {
      w->resize(480, 300);
      w->show();
      EXPECT_TRUE(QTest::qWaitForWindowExposed(w));
    }
    bar.redraw();
    xy.redraw();
    plotter.redraw();
  }
  std::vector<std::pair<const char*, QCustomPlot*>> plots() const {
    return {{"bar", bar.plot()}, {"xy", xy.plot()}, {"plotter", plotter.plot()}};
  }
};

// Each format at a chosen size and at the size on screen at twice the pixels; the plot is
// laid out for the screen again afterwards, so the mouse still finds its points.
TEST(ChartFile, EveryChartInEveryFormat) {
  Charts charts;
  QTemporaryDir dir;
  ASSERT_TRUE(dir.isValid());
  for (const auto& [kind, plot] : charts.plots()) {
    const QRect onScreen = plot->axisRect()->rect();
    struct Case { const char* ext; QSize size; double scale; } cases[] = {
        {"png", {640, 360}, 1.0}, {"PNG", plot->size(), 2.0}, {"png", {160, 300}, 1.0},  // narrow: labels turn
        {"svg", {640, 360}, 1.0}, {"pdf", {640, 360}, 1.0}};
    for (const Case& c : cases) {
      const QString path = dir.filePath(QString("%1-%2x%3.%4").arg(kind).arg(c.size.width()).arg(c.scale).arg(c.ext));
      SCOPED_TRACE(path.toStdString());
      ASSERT_EQ(SaveChart(plot, path, c.size, c.scale), QString());
      QFile file(path);
      const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
      const QString ext = QString(c.ext).toLower();
      if (ext == "png") {
        const QImage image(path);
        EXPECT_EQ(image.size(), c.size * c.scale);
        std::set<QRgb> colours;  // a drawn chart, not an empty canvas
        for (int y = 0; y < image.height(); y += 7)
          for (int x = 0; x < image.width(); x += 7) colours.insert(image.pixel(x, y));
        EXPECT_GT(colours.size(), 4u);
      } else if (ext == "svg") {
        for (const char* part : {"<svg", "viewBox=\"0 0 640 360\"", "<title>Quantavue chart</title>"})
          EXPECT_TRUE(bytes.startsWith("<?xml") && bytes.contains(part)) << part;
      } else {
        EXPECT_TRUE(bytes.startsWith("%PDF") && bytes.size() > 1000);
      }
      EXPECT_EQ(plot->axisRect()->rect(), onScreen);
      EXPECT_EQ(charts.bar.labelRotation(), 0.0);
    }
  }
}

// A name that is no chart format, a folder that does not exist, a folder that cannot be
// written: a message naming the trouble, and no file, not even a temporary one.
TEST(ChartFile, RefusalsLeaveNoFile) {
  Charts charts;
  QTemporaryDir dir, locked;
  ASSERT_TRUE(dir.isValid() && locked.isValid());
  QFile::setPermissions(locked.path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
  const bool lockedHolds = !QFileInfo(locked.path()).isWritable();  // root writes anyway
  struct Case { QString path; QSize size; const char* says; bool skip; } cases[] = {
      {dir.filePath("chart.bmpx"), {300, 200}, ".png, .svg or .pdf", false},
      {dir.filePath("chart"), {300, 200}, ".png, .svg or .pdf", false},
      {dir.filePath("missing/chart.png"), {300, 200}, "could not be saved to", false},
      {dir.filePath("missing/chart.pdf"), {300, 200}, "could not be saved to", false},
      {dir.filePath("chart.svg"), {0, 200}, "size of the picture is not valid", false},
      {locked.filePath("chart.svg"), {300, 200}, "could not be saved to", !lockedHolds}};
  for (const Case& c : cases) {
    if (c.skip) continue;
    const QString message = SaveChart(charts.xy.plot(), c.path, c.size, 1.0);
    EXPECT_TRUE(message.contains(c.says)) << c.path.toStdString() << ": " << message.toStdString();
    EXPECT_FALSE(QFileInfo::exists(c.path)) << c.path.toStdString();
  }
  for (const QTemporaryDir* d : {&dir, &locked})
    EXPECT_TRUE(QDir(d->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden).isEmpty());
  QFile::setPermissions(locked.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

TEST(ChartFile, ExtensionOfTheChosenFilter) {
  EXPECT_EQ(WithChartExtension("/p/Histogram", "SVG drawing (*.svg)"), "/p/Histogram.svg");
  EXPECT_EQ(WithChartExtension("/p/Histogram v1.2", "PDF document (*.pdf)"), "/p/Histogram v1.2.pdf");
  EXPECT_EQ(WithChartExtension("/p/Histogram.PNG", "PDF document (*.pdf)"), "/p/Histogram.PNG");
}

// A right-click opens the menu and leaves the Plotter's line where it is; "at size" asks
// the size, offers the chart's own name and writes the file; a failure becomes a warning.
TEST(ChartFile, RightClickMenu) {
  Charts charts;
  charts.plotter.setFileBaseName("Cumulative");
  QTemporaryDir dir;
  ChartFileDialogs& hooks = ChartFileHooks();
  const ChartFileDialogs real = hooks;
  QString suggested, warning;
  QString answer = dir.filePath("out");
  hooks.chooseSize = [](QWidget*, QSize) { return std::optional<QSize>(QSize(300, 200)); };
  hooks.chooseFile = [&](QWidget*, const QString& s) { suggested = s; return answer; };
  hooks.warn = [&](QWidget*, const QString& m) { warning = m; };

  const double lineAt = charts.plotter.cursorX();
  for (const auto& [kind, plot] : charts.plots()) {
    // The press and release reach the plot; the menu comes with the context-menu event.
    QTest::mouseClick(plot, Qt::RightButton, {}, QPoint(120, 100));
    QContextMenuEvent rightClick(QContextMenuEvent::Mouse, QPoint(120, 100), plot->mapToGlobal(QPoint(120, 100)));
    QCoreApplication::sendEvent(plot, &rightClick);
    QMenu* menu = plot->findChild<QMenu*>("ChartFileMenu");
    ASSERT_NE(menu, nullptr) << kind;
    for (const char* action : {"SaveChartAs", "SaveChartAtSize"})
      EXPECT_NE(menu->findChild<QAction*>(action), nullptr) << kind << " " << action;
    menu->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  EXPECT_EQ(charts.plotter.cursorX(), lineAt);

  emit charts.plotter.plot()->customContextMenuRequested(QPoint(10, 10));
  QMenu* menu = charts.plotter.plot()->findChild<QMenu*>("ChartFileMenu");
  ASSERT_NE(menu, nullptr);
  answer = dir.filePath("out.png");
  menu->findChild<QAction*>("SaveChartAtSize")->trigger();
  EXPECT_EQ(QFileInfo(suggested).fileName(), "Cumulative.png");
  EXPECT_EQ(QImage(answer).size(), QSize(300, 200));
  EXPECT_TRUE(warning.isEmpty());
  answer = dir.filePath("missing/out.png");
  menu->findChild<QAction*>("SaveChartAs")->trigger();
  EXPECT_TRUE(warning.contains("missing")) << warning.toStdString();
  menu->close();
  hooks = real;
}

}  // namespace
}  // namespace qv
