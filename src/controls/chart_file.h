// Saving a chart as a file: PNG, SVG or PDF, chosen by the file's extension, and the
// right-click menu that offers it on every chart.
#pragma once

#include <QSize>
#include <QString>

#include <functional>
#include <optional>

class QCustomPlot;
class QWidget;

namespace qv {

// Draws the plot at size (logical pixels) into the file at path; the extension (.png, .svg,
// .pdf, any case) picks the format. A PNG has size * scale pixels, so a scale of the screen's
// pixel ratio gives the picture as seen. The file is written whole or not at all.
// Returns an empty string on success, else a message for the user.
QString SaveChart(QCustomPlot* plot, const QString& path, QSize size, double scale = 1.0);

// The name typed in the file chooser with the extension of the chosen filter added when it
// has none of the three (filter e.g. "SVG drawing (*.svg)").
QString WithChartExtension(const QString& path, const QString& filter);

// The dialogs behind the menu, replaceable so that tests can answer them.
struct ChartFileDialogs {
  // The file to write, starting from a suggested path; empty when the user cancels.
  std::function<QString(QWidget* parent, const QString& suggested)> chooseFile;
  // Width and height in pixels, starting from the size on screen; nothing on Cancel.
  std::function<std::optional<QSize>(QWidget* parent, QSize initial)> chooseSize;
  std::function<void(QWidget* parent, const QString& message)> warn;
};
// The dialogs in use; the real ones unless a test put others in.
ChartFileDialogs& ChartFileHooks();

// Gives the plot inside chart a context menu with "Save Chart As..." (objectName
// SaveChartAs, the size on screen) and "Save Chart at Size..." (SaveChartAtSize). The
// menu is built on each right-click as a child of the plot and deletes itself on closing.
void AddChartFileMenu(QWidget* chart, QCustomPlot* plot);

// The file name offered first, without extension; "Chart" until set.
void SetChartFileBaseName(QWidget* chart, const QString& name);
QString ChartFileBaseName(const QWidget* chart);

}  // namespace qv
