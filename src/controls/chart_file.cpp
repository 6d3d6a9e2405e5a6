// Chart files: PNG through the plot's own raster, SVG and PDF through its painter, each
// written through a QSaveFile so that a failed save leaves nothing behind.
#include "chart_file.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QImage>
#include <QMenu>
#include <QMessageBox>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QPointer>
#include <QRegularExpression>
#include <QSaveFile>
#include <QSpinBox>
#include <QStandardPaths>
#include <QSvgGenerator>
#include <qcustomplot.h>

#include <cmath>

namespace qv {

namespace {

const QString kPngFilter = QStringLiteral("PNG picture (*.png)");
const QString kSvgFilter = QStringLiteral("SVG drawing (*.svg)");
const QString kPdfFilter = QStringLiteral("PDF document (*.pdf)");
constexpr char kBaseNameProperty[] = "chartFileBaseName";
constexpr int kMinSide = 16;
constexpr int kMaxSide = 10000;

// The plot keeps its background brush to itself and fills it only in its own exports; a
// drawing on our painter has to fill it first.
struct BackgroundOf : QCustomPlot {
  static QBrush QCustomPlot::*brush() { return &BackgroundOf::mBackgroundBrush; }
};

bool KnownSuffix(const QString& suffix) {
  return suffix == QLatin1String("png") || suffix == QLatin1String("svg") || suffix == QLatin1String("pdf");
}

QString Failed(const QString& path, const QString& reason) {
  return QStringLiteral("The chart could not be saved to %1: %2.")
      .arg(QDir::toNativeSeparators(path), reason.endsWith(QLatin1Char('.')) ? reason.chopped(1) : reason);
}

// Fonts are given in points: the screen's resolution keeps text the size it has on screen.
int ScreenDpi(const QCustomPlot* plot) {
  const int dpi = plot->logicalDpiY();
  return dpi > 0 ? dpi : 96;
}

// Draws the plot as vectors into painter, over the plot's background.
void PaintVectors(QCustomPlot* plot, QCPPainter& painter, QSize size) {
  painter.setMode(QCPPainter::pmVectorized);
  painter.setMode(QCPPainter::pmNoCaching);  // labels as text, not as cached pictures
  painter.setMode(QCPPainter::pmNonCosmetic);
  const QBrush& ground = plot->*BackgroundOf::brush();
  if (ground.style() != Qt::NoBrush) painter.fillRect(QRect(QPoint(0, 0), size), ground);
  plot->toPainter(&painter, size.width(), size.height());
}

// Lays the plot out within viewport the way a replot does, and lets the chart fit itself
// to that room first (a bar chart turns or thins its labels before each replot).
void LayOut(QCustomPlot* plot, const QRect& viewport, bool fit) {
  plot->setViewport(viewport);
  for (int pass = fit ? 0 : 1; pass < 2; ++pass) {
    QCPLayoutGrid* layout = plot->plotLayout();
    layout->update(QCPLayoutElement::upPreparation);
    layout->update(QCPLayoutElement::upMargins);
    layout->update(QCPLayoutElement::upLayout);
    if (pass == 0) emit plot->beforeReplot();
  }
}

QString WritePng(QCustomPlot* plot, QSaveFile& file, QSize size, double scale) {
  const QImage image = plot->toPixmap(size.width(), size.height(), scale).toImage();
  if (image.isNull())
    return QStringLiteral("there is not enough memory for a picture of %1 x %2 pixels")
        .arg(std::lround(size.width() * scale)).arg(std::lround(size.height() * scale));
  if (!image.save(&file, "PNG"))
    return file.errorString().isEmpty() ? QStringLiteral("the picture could not be written") : file.errorString();
  return {};
}

QString WriteSvg(QCustomPlot* plot, QSaveFile& file, QSize size) {
  QSvgGenerator svg;
  svg.setOutputDevice(&file);
  svg.setResolution(ScreenDpi(plot));
  svg.setSize(size);
  svg.setViewBox(QRect(QPoint(0, 0), size));
  svg.setTitle(QStringLiteral("Quantavue chart"));
  QCPPainter painter;
  if (!painter.begin(&svg)) return QStringLiteral("the drawing could not be started");
  PaintVectors(plot, painter, size);
  painter.end();
  return {};
}

QString WritePdf(QCustomPlot* plot, QSaveFile& file, QSize size) {
  const int dpi = ScreenDpi(plot);
  QPdfWriter pdf(&file);
  pdf.setResolution(dpi);
  pdf.setTitle(QStringLiteral("Quantavue chart"));
  pdf.setCreator(QStringLiteral("Quantavue"));
  // One page the size of the chart as the screen shows it, without margins.
  const QPageSize page(QSizeF(size) * 72.0 / dpi, QPageSize::Point, QString(), QPageSize::ExactMatch);
  if (!pdf.setPageLayout(QPageLayout(page, QPageLayout::Portrait, QMarginsF(0, 0, 0, 0))))
    return QStringLiteral("the page size is not accepted");
  QCPPainter painter;
  if (!painter.begin(&pdf)) return QStringLiteral("the document could not be started");
  painter.setWindow(QRect(QPoint(0, 0), size));
  PaintVectors(plot, painter, size);
  painter.end();
  return {};
}

QString ChooseFileDialog(QWidget* parent, const QString& suggested) {
  const QString suffix = QFileInfo(suggested).suffix().toLower();
  QString selected = suffix == QLatin1String("svg")   ? kSvgFilter
                     : suffix == QLatin1String("pdf") ? kPdfFilter
                                                      : kPngFilter;
  const QString filters = QStringList{kPngFilter, kSvgFilter, kPdfFilter}.join(QStringLiteral(";;"));
  const QString path =
      QFileDialog::getSaveFileName(parent, QStringLiteral("Save Chart"), suggested, filters, &selected);
  return path.isEmpty() ? QString() : WithChartExtension(path, selected);
}

std::optional<QSize> ChooseSizeDialog(QWidget* parent, QSize initial) {
  QDialog dialog(parent);
  dialog.setWindowTitle(QStringLiteral("Save Chart at Size"));
  auto* form = new QFormLayout(&dialog);
  QSpinBox* sides[2];
  const int start[2] = {initial.width(), initial.height()};
  const char* names[2] = {"ChartWidth", "ChartHeight"};
  for (int i = 0; i < 2; ++i) {
    sides[i] = new QSpinBox(&dialog);
    sides[i]->setObjectName(QLatin1String(names[i]));
    sides[i]->setRange(kMinSide, kMaxSide);
    sides[i]->setValue(start[i]);
    sides[i]->setSuffix(QStringLiteral(" px"));
  }
  form->addRow(QStringLiteral("Width:"), sides[0]);
  form->addRow(QStringLiteral("Height:"), sides[1]);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  form->addRow(buttons);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return QSize(sides[0]->value(), sides[1]->value());
}

void WarnDialog(QWidget* parent, const QString& message) {
  QMessageBox::warning(parent, QStringLiteral("Save Chart"), message);
}

// The folder and format of the last save, for the next one in this session.
QString& LastFolder() {
  static QString folder = [] {
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return !pictures.isEmpty() && QDir(pictures).exists() ? pictures : QDir::homePath();
  }();
  return folder;
}

QString& LastSuffix() {
  static QString suffix = QStringLiteral("png");
  return suffix;
}

void SaveFromMenu(QWidget* chart, QCustomPlot* plot, bool askSize) {
  const QPointer<QCustomPlot> alive(plot);
  ChartFileDialogs& dialogs = ChartFileHooks();
  QSize size = plot->size();
  double scale = plot->devicePixelRatioF();
  if (askSize) {
    const std::optional<QSize> chosen = dialogs.chooseSize(chart, size);
    if (!chosen || !alive) return;
    size = *chosen;
    scale = 1.0;
  }
  const QString suggested = QDir(LastFolder()).filePath(ChartFileBaseName(chart) + QLatin1Char('.') + LastSuffix());
  const QString path = dialogs.chooseFile(chart, suggested);
  if (path.isEmpty() || !alive) return;
  const QString message = SaveChart(plot, path, size, scale);
  if (!message.isEmpty()) {
    dialogs.warn(chart, message);
    return;
  }
  const QFileInfo saved(path);
  LastFolder() = saved.absolutePath();
  LastSuffix() = saved.suffix().toLower();
}

}  // namespace

QString SaveChart(QCustomPlot* plot, const QString& path, QSize size, double scale) {
  const QString suffix = QFileInfo(path).suffix().toLower();
  if (path.isEmpty() || !KnownSuffix(suffix))
    return QStringLiteral("A chart is saved as a PNG picture, an SVG drawing or a PDF document: "
                          "the file name \"%1\" must end in .png, .svg or .pdf.")
        .arg(QFileInfo(path).fileName());
  if (plot == nullptr || size.width() < 1 || size.height() < 1 || !std::isfinite(scale) || scale <= 0.0)
    return Failed(path, QStringLiteral("the size of the picture is not valid"));

  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return Failed(path, file.errorString());
  const QRect screen = plot->viewport();
  const bool resized = screen.size() != size;
  if (resized) LayOut(plot, QRect(QPoint(0, 0), size), true);
  const QString problem = suffix == QLatin1String("png")   ? WritePng(plot, file, size, scale)
                          : suffix == QLatin1String("svg") ? WriteSvg(plot, file, size)
                                                           : WritePdf(plot, file, size);
  // The drawing moved the plot's axes; the screen and the mouse need them where they were.
  LayOut(plot, screen, false);
  plot->replot();
  if (!problem.isEmpty()) {
    file.cancelWriting();
    return Failed(path, problem);
  }
  if (!file.commit()) return Failed(path, file.errorString());
  return {};
}

QString WithChartExtension(const QString& path, const QString& filter) {
  if (path.isEmpty() || KnownSuffix(QFileInfo(path).suffix().toLower())) return path;
  static const QRegularExpression pattern(QStringLiteral("\\*\\.(\\w+)"));
  const QRegularExpressionMatch match = pattern.match(filter);
  if (!match.hasMatch()) return path;
  QString base = path;
  while (base.endsWith(QLatin1Char('.'))) base.chop(1);
  return base + QLatin1Char('.') + match.captured(1).toLower();
}

ChartFileDialogs& ChartFileHooks() {
  static ChartFileDialogs dialogs{ChooseFileDialog, ChooseSizeDialog, WarnDialog};
  return dialogs;
}

void AddChartFileMenu(QWidget* chart, QCustomPlot* plot) {
  plot->setContextMenuPolicy(Qt::CustomContextMenu);
  QObject::connect(plot, &QWidget::customContextMenuRequested, chart, [chart, plot](const QPoint& at) {
    auto* menu = new QMenu(plot);
    menu->setObjectName(QStringLiteral("ChartFileMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction* asShown = menu->addAction(QStringLiteral("Save Chart As..."));
    asShown->setObjectName(QStringLiteral("SaveChartAs"));
    QAction* atSize = menu->addAction(QStringLiteral("Save Chart at Size..."));
    atSize->setObjectName(QStringLiteral("SaveChartAtSize"));
    QObject::connect(asShown, &QAction::triggered, chart, [chart, plot] { SaveFromMenu(chart, plot, false); });
    QObject::connect(atSize, &QAction::triggered, chart, [chart, plot] { SaveFromMenu(chart, plot, true); });
    menu->popup(plot->mapToGlobal(at));
  });
}

void SetChartFileBaseName(QWidget* chart, const QString& name) { chart->setProperty(kBaseNameProperty, name); }

QString ChartFileBaseName(const QWidget* chart) {
  const QString name = chart->property(kBaseNameProperty).toString().trimmed();
  return name.isEmpty() ? QStringLiteral("Chart") : name;
}

}  // namespace qv
