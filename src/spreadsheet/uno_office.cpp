// The object model over the office's UNO API. Every call that reaches the office is
// wrapped so that a failure becomes an OfficeError, never a crash.
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <exception>
#include <mutex>
#include <thread>
#include <type_traits>

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/bridge/XUnoUrlResolver.hpp>
#include <com/sun/star/connection/NoConnectException.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/drawing/XDrawPageSupplier.hpp>
#include <com/sun/star/drawing/XShape.hpp>
#include <com/sun/star/drawing/XShapes.hpp>
#include <com/sun/star/frame/XComponentLoader.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XDesktop.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/frame/XTitle.hpp>
#include <com/sun/star/awt/XTopWindow.hpp>
#include <com/sun/star/awt/XWindow.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/lang/XComponent.hpp>
#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/lang/Locale.hpp>
#include <com/sun/star/sheet/FormulaResult.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangeReferrer.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XFunctionAccess.hpp>
#include <com/sun/star/sheet/XNamedRanges.hpp>
#include <com/sun/star/sheet/XRangeSelection.hpp>
#include <com/sun/star/sheet/XRangeSelectionListener.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XSheetCellRangeContainer.hpp>
#include <com/sun/star/sheet/XSheetOperation.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>
#include <com/sun/star/sheet/XUniqueCellFormatRangesSupplier.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/table/CellAddress.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/table/XCellRange.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <com/sun/star/util/NumberFormat.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/util/XModifyBroadcaster.hpp>
#include <com/sun/star/util/XModifyListener.hpp>
#include <com/sun/star/util/XModifiable.hpp>
#include <com/sun/star/util/XNumberFormatTypes.hpp>
#include <com/sun/star/util/XNumberFormats.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>
#include <com/sun/star/awt/FontUnderline.hpp>
#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/awt/Gradient.hpp>
#include <com/sun/star/awt/Rectangle.hpp>
#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/chart/ChartDataRowSource.hpp>
#include <com/sun/star/chart/DataLabelPlacement.hpp>
#include <com/sun/star/chart/XChartDocument.hpp>
#include <com/sun/star/chart/XDiagram.hpp>
#include <com/sun/star/chart2/DataPointLabel.hpp>
#include <com/sun/star/chart2/ScaleData.hpp>
#include <com/sun/star/chart2/XAxis.hpp>
#include <com/sun/star/chart2/XChartDocument.hpp>
#include <com/sun/star/chart2/XChartTypeContainer.hpp>
#include <com/sun/star/chart2/XCoordinateSystemContainer.hpp>
#include <com/sun/star/chart2/XDataSeriesContainer.hpp>
#include <com/sun/star/chart2/XDiagram.hpp>
#include <com/sun/star/chart2/data/XDataSource.hpp>
#include <com/sun/star/chart2/data/XLabeledDataSequence.hpp>
#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/document/XEmbeddedObjectSupplier.hpp>
#include <com/sun/star/drawing/FillStyle.hpp>
#include <com/sun/star/drawing/LineStyle.hpp>
#include <com/sun/star/sheet/ConditionEntryType.hpp>
#include <com/sun/star/sheet/ConditionFormatOperator.hpp>
#include <com/sun/star/sheet/XCellRangeFormula.hpp>
#include <com/sun/star/sheet/XConditionalFormat.hpp>
#include <com/sun/star/sheet/XConditionalFormats.hpp>
#include <com/sun/star/sheet/ConditionOperator.hpp>
#include <com/sun/star/sheet/XSheetConditionalEntries.hpp>
#include <com/sun/star/style/XStyle.hpp>
#include <com/sun/star/style/XStyleFamiliesSupplier.hpp>
#include <com/sun/star/table/BorderLine2.hpp>
#include <com/sun/star/table/BorderLineStyle.hpp>
#include <com/sun/star/table/CellHoriJustify.hpp>
#include <com/sun/star/table/CellVertJustify2.hpp>
#include <com/sun/star/table/TableBorder2.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/table/XTableChart.hpp>
#include <com/sun/star/table/XTableCharts.hpp>
#include <com/sun/star/table/XTableChartsSupplier.hpp>
#include <com/sun/star/text/WritingMode2.hpp>
#include <com/sun/star/view/DocumentZoomType.hpp>
#include <cppuhelper/bootstrap.hxx>
#include <cppuhelper/implbase1.hxx>
#include <rtl/ref.hxx>
#include <rtl/ustring.hxx>

#include "office.h"

using namespace com::sun::star;
using com::sun::star::uno::Any;
using com::sun::star::uno::Exception;
using com::sun::star::uno::Reference;
using com::sun::star::uno::Sequence;
using com::sun::star::uno::UNO_QUERY;
using com::sun::star::uno::UNO_QUERY_THROW;
using rtl::OString;
using rtl::OUString;

namespace qv {

namespace {

OUString U(const std::string& s) {
  return OStringToOUString(OString(s.c_str(), static_cast<sal_Int32>(s.size())), RTL_TEXTENCODING_UTF8);
}

std::string S(const OUString& s) {
  OString o = OUStringToOString(s, RTL_TEXTENCODING_UTF8);
  return std::string(o.getStr(), static_cast<std::size_t>(o.getLength()));
}

[[noreturn]] void Fail(const std::string& what, const Exception& e) {
  throw OfficeError(what + ": " + S(e.Message));
}

OfficeCallWaiter& Waiter() {
  static auto* waiter = new OfficeCallWaiter;  // outlives every static that may call
  return *waiter;
}

// The bulk call under way, read by a waiter on another thread.
std::atomic<int> gProgressWork{0};
std::atomic<std::int64_t> gProgressDone{0};
std::atomic<std::int64_t> gProgressTotal{0};

class ProgressScope {
 public:
  ProgressScope(OfficeProgress::Work work, std::int64_t total) {
    gProgressDone.store(0);
    gProgressTotal.store(total);
    gProgressWork.store(static_cast<int>(work));
  }
  ~ProgressScope() {
    gProgressWork.store(0);
    gProgressTotal.store(0);
    gProgressDone.store(0);
  }
  void advance(std::int64_t cells) { gProgressDone.fetch_add(cells); }
  ProgressScope(const ProgressScope&) = delete;
  ProgressScope& operator=(const ProgressScope&) = delete;
};

// Set while a thread runs a call handed to the waiter: calls from inside it run inline.
thread_local int tInsideCall = 0;

// Runs f through the waiter, if there is one; its result or exception comes back here.
template <class F>
auto Waited(F&& f) -> decltype(f()) {
  using R = decltype(f());
  if (!Waiter() || tInsideCall > 0) return f();
  std::exception_ptr error;
  std::optional<std::conditional_t<std::is_void_v<R>, bool, R>> result;
  Waiter()([&] {
    ++tInsideCall;
    try {
      if constexpr (std::is_void_v<R>) {
        f();
        result.emplace(true);
      } else {
        result.emplace(f());
      }
    } catch (...) {
      error = std::current_exception();
    }
    --tInsideCall;
  });
  if (error) std::rethrow_exception(error);
  if (!result) throw OfficeError("The spreadsheet does not answer");
  if constexpr (!std::is_void_v<R>) return std::move(*result);
}

// Runs an office call; every UNO exception becomes an OfficeError naming the step.
template <class F>
auto Guard(const char* what, F&& f) -> decltype(f()) {
  return Waited([&]() -> decltype(f()) {
    try {
      return f();
    } catch (const OfficeError&) {
      throw;
    } catch (const lang::DisposedException& e) {
      throw OfficeError(std::string("The spreadsheet has gone away (") + what + ")");
    } catch (const Exception& e) {
      Fail(what, e);
    }
  });
}

table::CellRangeAddress ToUno(const CellRangeRef& r) {
  table::CellRangeAddress a;
  a.Sheet = static_cast<sal_Int16>(r.sheet);
  a.StartColumn = r.firstCol;
  a.StartRow = r.firstRow;
  a.EndColumn = r.lastCol;
  a.EndRow = r.lastRow;
  return a;
}

CellRangeRef FromUno(const table::CellRangeAddress& a) {
  return CellRangeRef{a.Sheet, a.StartColumn, a.StartRow, a.EndColumn, a.EndRow};
}

beans::PropertyValue Prop(const char* name, const Any& value) {
  beans::PropertyValue p;
  p.Name = OUString::createFromAscii(name);
  p.Value = value;
  return p;
}

class ModifyFlag : public cppu::WeakImplHelper1<util::XModifyListener> {
 public:
  std::atomic<bool> changed{false};
  // Called on a bridge thread for edits made in the office, on ours for our own.
  void SAL_CALL modified(const lang::EventObject&) override { changed = true; }
  void SAL_CALL disposing(const lang::EventObject&) override { changed = true; }
};

class PickListener : public cppu::WeakImplHelper1<sheet::XRangeSelectionListener> {
 public:
  std::mutex m;
  std::condition_variable cv;
  bool finished = false;
  bool wasAborted = false;
  OUString descriptor;
  void SAL_CALL done(const sheet::RangeSelectionEvent& e) override {
    std::lock_guard<std::mutex> l(m);
    descriptor = e.RangeDescriptor;
    finished = true;
    cv.notify_all();
  }
  void SAL_CALL aborted(const sheet::RangeSelectionEvent&) override { abort(); }
  void SAL_CALL disposing(const lang::EventObject&) override { abort(); }
  void abort() {
    std::lock_guard<std::mutex> l(m);
    if (finished) return;
    wasAborted = true;
    finished = true;
    cv.notify_all();
  }
};

}  // namespace

struct Office::Impl {
  Reference<uno::XComponentContext> ctx;
  Reference<lang::XMultiComponentFactory> smgr;
  Reference<frame::XDesktop> desktop;
  Reference<sheet::XFunctionAccess> functions;

  Reference<sheet::XFunctionAccess> functionAccess() {
    if (!functions.is())
      functions.set(smgr->createInstanceWithContext("com.sun.star.sheet.FunctionAccess", ctx), UNO_QUERY_THROW);
    return functions;
  }
};

// The range pick in progress, whichever workbook object started it: the office shows one
// picker at a time, and a window closing must be able to end it.
struct ActivePick {
  rtl::Reference<PickListener> listener;
  Reference<sheet::XRangeSelection> picker;
};
ActivePick& CurrentPick() {
  static auto* pick = new ActivePick;
  return *pick;
}

struct Workbook::Impl {
  Reference<frame::XModel> model;
  Reference<sheet::XSpreadsheetDocument> doc;
  Reference<lang::XMultiServiceFactory> factory;
  rtl::Reference<ModifyFlag> flag;
  Reference<util::XModifyBroadcaster> watched;

  Reference<sheet::XSpreadsheet> sheet(int index) {
    Reference<container::XIndexAccess> sheets(doc->getSheets(), UNO_QUERY_THROW);
    return Reference<sheet::XSpreadsheet>(sheets->getByIndex(index), UNO_QUERY_THROW);
  }
  Reference<table::XCellRange> range(const CellRangeRef& r) {
    return sheet(r.sheet)->getCellRangeByPosition(r.firstCol, r.firstRow, r.lastCol, r.lastRow);
  }
  Reference<frame::XController> controller() {
    Reference<frame::XController> c = model->getCurrentController();
    if (!c.is()) throw OfficeError("The workbook has no window");
    return c;
  }
  void unwatch() {
    if (watched.is() && flag.is()) {
      try {
        Guard("no longer watching the range",
              [&] { watched->removeModifyListener(Reference<util::XModifyListener>(flag.get())); });
      } catch (const OfficeError&) {
      }
    }
    watched.clear();
  }
};

namespace {

std::shared_ptr<Workbook> MakeWorkbook(const Reference<lang::XComponent>& component) {
  Reference<sheet::XSpreadsheetDocument> doc(component, UNO_QUERY);
  if (!doc.is()) return nullptr;
  auto impl = std::make_unique<Workbook::Impl>();
  impl->doc = doc;
  impl->model.set(doc, UNO_QUERY_THROW);
  impl->factory.set(doc, UNO_QUERY_THROW);
  impl->flag = new ModifyFlag;
  return std::make_shared<Workbook>(std::move(impl));
}

std::string PipeName(const std::string& connection) {
  const std::string key = "name=";
  auto p = connection.find(key);
  if (connection.rfind("pipe", 0) != 0 || p == std::string::npos) return {};
  auto e = connection.find_first_of(",;", p);
  return connection.substr(p + key.size(), e == std::string::npos ? std::string::npos : e - p - key.size());
}

// Calls that change the document only for our own bookkeeping (the workbook name) leave
// its modified flag as they found it.
template <class F>
void KeepingModifiedFlag(const Reference<frame::XModel>& model, F&& f) {
  Reference<util::XModifiable> flag(model, UNO_QUERY);
  bool before = flag.is() && flag->isModified();
  f();
  if (flag.is() && !before && flag->isModified()) flag->setModified(false);
}

}  // namespace

void SetOfficeCallWaiter(OfficeCallWaiter waiter) { Waiter() = std::move(waiter); }

OfficeProgress CurrentOfficeProgress() {
  OfficeProgress p;
  p.work = static_cast<OfficeProgress::Work>(gProgressWork.load());
  p.total = gProgressTotal.load();
  p.done = std::min(gProgressDone.load(), p.total);
  if (p.total == 0) p.work = OfficeProgress::Work::None;
  return p;
}

std::string Office::DefaultConnection() {
  const char* env = std::getenv("QUANTAVUE_CONNECT");
  return env && *env ? env : "pipe,name=quantavue;urp;";
}

Office::Office(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
Office::~Office() = default;

std::unique_ptr<Office> Office::Attach(const std::string& connection) {
  // The pipe's name is predictable: talk only to an office of our own user. lstat, so
  // that a link planted there cannot lead us to somebody else's socket.
  std::string pipe = PipeName(connection);
  if (!pipe.empty()) {
    std::string path = "/tmp/OSL_PIPE_" + std::to_string(getuid()) + "_" + pipe;
    struct stat st {};
    if (lstat(path.c_str(), &st) != 0) throw NoOfficeError("No office listens on the pipe " + pipe);
    if (!S_ISSOCK(st.st_mode) || st.st_uid != getuid())
      throw OfficeError("The pipe " + path +
                        " is not a socket of your own; Quantavue will not connect to it.");
  }
  // A peer that closes the pipe under a write is an office gone away, not a reason to
  // die of SIGPIPE.
  signal(SIGPIPE, SIG_IGN);
  // Without this the bootstrap seems to work and the first office call crashes.
  setenv("URE_BOOTSTRAP", "vnd.sun.star.pathname:/usr/lib/libreoffice/program/fundamentalrc", 0);
  auto impl = std::make_unique<Impl>();
  Waited([&] {
    try {
      // Kept for the life of the process: the runtime must not be torn down under it.
      static auto* local = new Reference<uno::XComponentContext>(cppu::defaultBootstrap_InitialComponentContext());
      Reference<bridge::XUnoUrlResolver> resolver(
          (*local)->getServiceManager()->createInstanceWithContext("com.sun.star.bridge.UnoUrlResolver", *local),
          UNO_QUERY_THROW);
      Reference<uno::XInterface> remote = resolver->resolve(U("uno:" + connection + "StarOffice.ComponentContext"));
      impl->ctx.set(remote, UNO_QUERY_THROW);
      impl->smgr = impl->ctx->getServiceManager();
      impl->desktop.set(impl->smgr->createInstanceWithContext("com.sun.star.frame.Desktop", impl->ctx),
                        UNO_QUERY_THROW);
    } catch (const connection::NoConnectException&) {
      throw NoOfficeError("No office answers on " + connection);
    } catch (const lang::DisposedException&) {
      throw OfficeError("The spreadsheet has gone away (attaching to the office)");
    } catch (const Exception& e) {
      Fail("Attaching to the office", e);
    }
  });
  return std::unique_ptr<Office>(new Office(std::move(impl)));
}

std::shared_ptr<Workbook> Office::activeWorkbook() {
  return Guard("reading the active document", [&] {
    return MakeWorkbook(impl_->desktop->getCurrentComponent());
  });
}

std::shared_ptr<Workbook> Office::createWorkbook(bool hidden) {
  return Guard("creating a workbook", [&] {
    Reference<frame::XComponentLoader> loader(impl_->desktop, UNO_QUERY_THROW);
    Sequence<beans::PropertyValue> args(1);
    args[0] = Prop("Hidden", Any(hidden));
    return MakeWorkbook(loader->loadComponentFromURL("private:factory/scalc", "_blank", 0, args));
  });
}

std::shared_ptr<Workbook> Office::openWorkbook(const std::string& path, bool hidden) {
  return Guard("opening a workbook", [&] {
    Reference<frame::XComponentLoader> loader(impl_->desktop, UNO_QUERY_THROW);
    Sequence<beans::PropertyValue> args(1);
    args[0] = Prop("Hidden", Any(hidden));
    char* real = realpath(path.c_str(), nullptr);
    std::string abs = real ? real : path;
    free(real);
    auto book = MakeWorkbook(loader->loadComponentFromURL(U("file://" + abs), "_blank", 0, args));
    if (!book) throw OfficeError(path + " is no spreadsheet");
    return book;
  });
}

double Office::callFunction(const std::string& name, const Workbook& book, const CellRangeRef& range) {
  return Guard("calling a worksheet function", [&] {
    Sequence<Any> args(1);
    args[0] <<= book.impl().range(range);
    double v = 0;
    Any result = impl_->functionAccess()->callFunction(U(name), args);
    if (!(result >>= v))
      throw OfficeError(name + " gave no number but " + S(result.getValueTypeName()));
    return v;
  });
}

double Office::callFunction(const std::string& name, const std::vector<double>& values) {
  return Guard("calling a worksheet function", [&] {
    Sequence<Sequence<double>> column(static_cast<sal_Int32>(values.size()));
    for (std::size_t i = 0; i < values.size(); ++i) {
      Sequence<double> row(1);
      row[0] = values[i];
      column[static_cast<sal_Int32>(i)] = row;
    }
    Sequence<Any> args(1);
    args[0] <<= column;
    double v = 0;
    Any result = impl_->functionAccess()->callFunction(U(name), args);
    if (!(result >>= v))
      throw OfficeError(name + " gave no number but " + S(result.getValueTypeName()));
    return v;
  });
}

double Office::callFunction(const std::string& name, const Workbook& book, const CellRangeRef& range,
                            const std::string& criterion) {
  return Guard("calling a worksheet function", [&] {
    Sequence<Any> args(2);
    args[0] <<= book.impl().range(range);
    args[1] <<= U(criterion);
    double v = 0;
    Any result = impl_->functionAccess()->callFunction(U(name), args);
    if (!(result >>= v)) throw OfficeError(name + " gave no number but " + S(result.getValueTypeName()));
    return v;
  });
}

double Office::callScalar(const std::string& name, const std::vector<double>& values) {
  return Guard("calling a worksheet function", [&] {
    Sequence<Any> args(static_cast<sal_Int32>(values.size()));
    for (std::size_t i = 0; i < values.size(); ++i) args[static_cast<sal_Int32>(i)] <<= values[i];
    double v = 0;
    Any result = impl_->functionAccess()->callFunction(U(name), args);
    if (!(result >>= v))
      throw OfficeError(name + " gave no number but " + S(result.getValueTypeName()));
    return v;
  });
}

Workbook::Workbook(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
Workbook::~Workbook() {
  if (impl_) impl_->unwatch();
}

std::string Workbook::name() const {
  return Guard("reading the workbook's name", [&] {
    std::string url = S(impl_->model->getURL());
    if (!url.empty()) return BookNameFromUrl(url);
    Reference<frame::XTitle> title(impl_->model, UNO_QUERY);
    return title.is() ? S(title->getTitle()) : std::string("Untitled");
  });
}

bool Workbook::sameDocument(const Workbook& other) const {
  return impl_->model == other.impl_->model;
}

void Workbook::activate() {
  Guard("bringing the workbook to the front", [&] {
    Reference<frame::XFrame> frame = impl_->controller()->getFrame();
    if (!frame.is()) return;
    frame->activate();
    Reference<awt::XTopWindow> top(frame->getContainerWindow(), UNO_QUERY);
    if (top.is()) top->toFront();
    Reference<awt::XWindow> w(frame->getContainerWindow(), UNO_QUERY);
    if (w.is()) w->setFocus();
  });
}

int Workbook::activeSheet() {
  return Guard("reading the active sheet", [&] {
    Reference<sheet::XSpreadsheetView> view(impl_->controller(), UNO_QUERY_THROW);
    Reference<sheet::XCellRangeAddressable> a(view->getActiveSheet(), UNO_QUERY_THROW);
    return static_cast<int>(a->getRangeAddress().Sheet);
  });
}

std::string Workbook::sheetName(int sheet) {
  return Guard("reading a sheet's name", [&] {
    Reference<container::XNamed> named(impl_->sheet(sheet), UNO_QUERY_THROW);
    return S(named->getName());
  });
}

Selection Workbook::selection() {
  return Guard("reading the selection", [&] {
    Reference<view::XSelectionSupplier> sup(impl_->controller(), UNO_QUERY_THROW);
    Any sel = sup->getSelection();
    Selection s;
    Reference<sheet::XSheetCellRanges> many(sel, UNO_QUERY);
    if (many.is()) {
      for (const table::CellRangeAddress& a : many->getRangeAddresses()) s.areas.push_back(FromUno(a));
      return s;
    }
    Reference<sheet::XCellRangeAddressable> one(sel, UNO_QUERY);
    if (!one.is()) throw OfficeError("The selection holds no cells");
    s.areas.push_back(FromUno(one->getRangeAddress()));
    return s;
  });
}

std::optional<CellRangeRef> Workbook::pickRange(const std::string& title, const std::function<void()>& wait) {
  rtl::Reference<PickListener> listener = new PickListener;
  Guard("starting the range picker", [&] {
    Reference<sheet::XRangeSelection> picker(impl_->controller(), UNO_QUERY_THROW);
    picker->addRangeSelectionListener(Reference<sheet::XRangeSelectionListener>(listener.get()));
    Sequence<beans::PropertyValue> args(3);
    args[0] = Prop("Title", Any(U(title)));
    args[1] = Prop("CloseOnMouseRelease", Any(true));
    args[2] = Prop("InitialValue", Any(OUString()));
    picker->startRangeSelection(args);
    CurrentPick() = ActivePick{listener, picker};
  });
  // The listener alone cannot tell an office that has gone: ask it something cheap now
  // and then, which throws once it is gone.
  auto finishPick = [&] {
    try {
      Guard("ending the range picker", [&] {
        if (CurrentPick().picker.is())
          CurrentPick().picker->removeRangeSelectionListener(Reference<sheet::XRangeSelectionListener>(listener.get()));
      });
    } catch (const OfficeError&) {
    }
    CurrentPick() = ActivePick{};
  };
  auto lastAsked = std::chrono::steady_clock::now();
  try {
    for (;;) {
      {
        std::unique_lock<std::mutex> l(listener->m);
        // A short sleep between turns of `wait`, so that the wait does not spin.
        if (listener->cv.wait_for(l, std::chrono::milliseconds(10), [&] { return listener->finished; })) break;
      }
      wait();
      auto now = std::chrono::steady_clock::now();
      if (now - lastAsked >= std::chrono::milliseconds(250)) {
        lastAsked = now;
        Guard("waiting for the picked range", [&] { impl_->model->getURL(); });
      }
    }
  } catch (...) {
    finishPick();
    throw;
  }
  finishPick();
  if (listener->wasAborted) return std::nullopt;
  return Guard("reading the picked range", [&] {
    // The office's own parser reads its descriptor, quotes and all.
    Reference<beans::XPropertySet> conv(
        impl_->factory->createInstance("com.sun.star.table.CellRangeAddressConversion"), UNO_QUERY_THROW);
    conv->setPropertyValue("PersistentRepresentation", Any(listener->descriptor));
    table::CellRangeAddress a;
    conv->getPropertyValue("Address") >>= a;
    return std::optional<CellRangeRef>(FromUno(a));
  });
}

void Workbook::abortPick() {
  ActivePick pick = CurrentPick();
  if (!pick.listener.is()) return;
  try {
    Guard("cancelling the range picker", [&] {
      if (pick.picker.is()) pick.picker->abortRangeSelection();
    });
  } catch (const OfficeError&) {
  }
  pick.listener->abort();
}

bool Workbook::picking() const { return CurrentPick().listener.is(); }

std::optional<CellRangeRef> Workbook::usedRange(int sheet) {
  return Guard("reading the used range", [&]() -> std::optional<CellRangeRef> {
    Reference<sheet::XSheetCellCursor> cursor = impl_->sheet(sheet)->createCursor();
    Reference<sheet::XUsedAreaCursor> used(cursor, UNO_QUERY_THROW);
    used->gotoStartOfUsedArea(false);
    used->gotoEndOfUsedArea(true);
    Reference<sheet::XCellRangeAddressable> a(cursor, UNO_QUERY_THROW);
    return FromUno(a->getRangeAddress());
  });
}

CellBlock Workbook::read(const CellRangeRef& r) {
  return Guard("reading the range", [&] {
    CellBlock block;
    block.resize(r.rows(), r.cols());
    ProgressScope progress(OfficeProgress::Work::Reading, block.size());
    // Chunks of rows read faster than one call for the whole column.
    const std::int32_t chunk = 131072;
    Reference<sheet::XSpreadsheet> sheet = impl_->sheet(r.sheet);
    for (std::int32_t top = r.firstRow; top <= r.lastRow; top += chunk) {
      std::int32_t bottom = std::min<std::int64_t>(std::int64_t(top) + chunk - 1, r.lastRow);
      Reference<sheet::XCellRangeData> data(
          sheet->getCellRangeByPosition(r.firstCol, top, r.lastCol, bottom), UNO_QUERY_THROW);
      Sequence<Sequence<Any>> rows = data->getDataArray();
      std::int64_t base = std::int64_t(top - r.firstRow) * r.cols();
      for (sal_Int32 i = 0; i < rows.getLength(); ++i) {
        const Sequence<Any>& row = rows[i];
        for (sal_Int32 j = 0; j < row.getLength(); ++j) {
          std::int64_t k = base + std::int64_t(i) * r.cols() + j;
          const Any& v = row[j];
          switch (v.getValueTypeClass()) {
            case uno::TypeClass_DOUBLE:
              block.setNumber(k, *static_cast<const double*>(v.getValue()));
              break;
            case uno::TypeClass_STRING:
              block.setText(k, S(*static_cast<const OUString*>(v.getValue())));
              break;
            case uno::TypeClass_VOID:
              block.setNumber(k, 0, CellKind::Error);
              break;
            default:
              break;
          }
        }
      }
      progress.advance(std::int64_t(rows.getLength()) * r.cols());
    }
    // Dates and truth values come back as plain numbers: their number format tells.
    Reference<sheet::XUniqueCellFormatRangesSupplier> formats(impl_->range(r), UNO_QUERY_THROW);
    Reference<container::XIndexAccess> groups = formats->getUniqueCellFormatRanges();
    Reference<util::XNumberFormatsSupplier> nfs(impl_->doc, UNO_QUERY_THROW);
    Reference<util::XNumberFormats> numberFormats = nfs->getNumberFormats();
    for (sal_Int32 g = 0; g < groups->getCount(); ++g) {
      Reference<sheet::XSheetCellRanges> ranges(groups->getByIndex(g), UNO_QUERY_THROW);
      Reference<beans::XPropertySet> props(ranges, UNO_QUERY_THROW);
      sal_Int32 key = 0;
      props->getPropertyValue("NumberFormat") >>= key;
      sal_Int16 type = 0;
      numberFormats->getByKey(key)->getPropertyValue("Type") >>= type;
      CellKind kind;
      if (type & util::NumberFormat::LOGICAL)
        kind = CellKind::Logical;
      else if (type & (util::NumberFormat::DATE | util::NumberFormat::TIME))
        kind = CellKind::Date;
      else
        continue;
      for (const table::CellRangeAddress& a : ranges->getRangeAddresses()) {
        auto part = Intersect(FromUno(a), r);
        if (!part) continue;
        for (std::int32_t row = part->firstRow; row <= part->lastRow; ++row)
          for (std::int32_t col = part->firstCol; col <= part->lastCol; ++col) {
            std::int64_t k = std::int64_t(row - r.firstRow) * r.cols() + (col - r.firstCol);
            if (block.kinds[k] == CellKind::Number) block.kinds[k] = kind;
          }
      }
    }
    return block;
  });
}

CellBlock Workbook::readUsed(const CellRangeRef& r) {
  std::optional<CellRangeRef> used = usedRange(r.sheet);
  std::optional<CellRangeRef> part = used ? Intersect(r, *used) : std::nullopt;
  return part ? read(*part) : CellBlock{};
}

std::vector<CellRangeRef> Workbook::errorFormulaCells(const CellRangeRef& r) {
  return Guard("looking for error cells", [&] {
    Reference<sheet::XCellRangesQuery> query(impl_->range(r), UNO_QUERY_THROW);
    Reference<sheet::XSheetCellRanges> found = query->queryFormulaCells(sheet::FormulaResult::ERROR);
    std::vector<CellRangeRef> out;
    if (found.is())
      for (const table::CellRangeAddress& a : found->getRangeAddresses()) out.push_back(FromUno(a));
    return out;
  });
}

void Workbook::select(const std::vector<CellRangeRef>& areas) {
  Guard("selecting cells", [&] {
    Reference<view::XSelectionSupplier> sup(impl_->controller(), UNO_QUERY_THROW);
    if (areas.size() == 1) {
      sup->select(Any(impl_->range(areas[0])));
      return;
    }
    Reference<sheet::XSheetCellRangeContainer> ranges(
        impl_->factory->createInstance("com.sun.star.sheet.SheetCellRanges"), UNO_QUERY_THROW);
    for (const CellRangeRef& a : areas) ranges->addRangeAddress(ToUno(a), false);
    sup->select(Any(ranges));
  });
}

namespace {
Reference<sheet::XNamedRanges> Names(Workbook::Impl& w) {
  Reference<beans::XPropertySet> props(w.doc, UNO_QUERY_THROW);
  return Reference<sheet::XNamedRanges>(props->getPropertyValue("NamedRanges"), UNO_QUERY_THROW);
}
}  // namespace

void Workbook::defineName(const std::string& name, const CellRangeRef& range) {
  Guard("naming the range", [&] {
    std::string content = CalcAddress(range, sheetName(range.sheet));
    KeepingModifiedFlag(impl_->model, [&] {
      Reference<sheet::XNamedRanges> names = Names(*impl_);
      if (names->hasByName(U(name))) names->removeByName(U(name));
      table::CellAddress base;
      base.Sheet = static_cast<sal_Int16>(range.sheet);
      names->addNewByName(U(name), U(content), base, 0);
    });
  });
}

std::optional<CellRangeRef> Workbook::resolveName(const std::string& name) {
  return Guard("resolving the range's name", [&]() -> std::optional<CellRangeRef> {
    Reference<sheet::XNamedRanges> names = Names(*impl_);
    if (!names->hasByName(U(name))) return std::nullopt;
    Reference<sheet::XCellRangeReferrer> ref(names->getByName(U(name)), UNO_QUERY_THROW);
    Reference<table::XCellRange> cells = ref->getReferredCells();
    if (!cells.is()) return std::nullopt;
    Reference<sheet::XCellRangeAddressable> a(cells, UNO_QUERY_THROW);
    return FromUno(a->getRangeAddress());
  });
}

void Workbook::deleteName(const std::string& name) {
  Guard("deleting the range's name", [&] {
    KeepingModifiedFlag(impl_->model, [&] {
      Reference<sheet::XNamedRanges> names = Names(*impl_);
      if (names->hasByName(U(name))) names->removeByName(U(name));
    });
  });
}

bool Workbook::modified() {
  return Guard("reading the modified flag", [&] {
    Reference<util::XModifiable> flag(impl_->model, UNO_QUERY);
    return flag.is() && flag->isModified();
  });
}

std::string Workbook::address(const CellRangeRef& range, bool external) {
  if (!external) return A1Address(range);
  return ExternalAddress(range, name(), sheetName(range.sheet));
}

void Workbook::watch(const CellRangeRef& range) {
  Guard("watching the range", [&] {
    impl_->unwatch();
    Reference<util::XModifyBroadcaster> b(impl_->range(range), UNO_QUERY_THROW);
    b->addModifyListener(Reference<util::XModifyListener>(impl_->flag.get()));
    impl_->watched = b;
    impl_->flag->changed = false;
  });
}

bool Workbook::changed() const { return !impl_->watched.is() || impl_->flag->changed; }
void Workbook::clearChanged() { impl_->flag->changed = false; }

void Workbook::write(const CellRangeRef& at, const CellBlock& values) {
  Guard("writing cells", [&] {
    // Long blocks go in slices of about 256k cells: faster than one call for them all.
    const std::int64_t sliceRows = std::max<std::int64_t>(1, (std::int64_t(1) << 18) / std::max<std::int64_t>(1, values.cols));
    ProgressScope progress(OfficeProgress::Work::Writing, values.size());
    for (std::int64_t first = 0; first < values.rows; first += sliceRows) {
      const std::int64_t count = std::min(sliceRows, values.rows - first);
      Sequence<Sequence<Any>> rows(static_cast<sal_Int32>(count));
      Sequence<Any>* out = rows.getArray();
      for (std::int64_t i = 0; i < count; ++i) {
        Sequence<Any> row(static_cast<sal_Int32>(values.cols));
        Any* cell = row.getArray();
        for (std::int64_t j = 0; j < values.cols; ++j) {
          std::int64_t k = (first + i) * values.cols + j;
          switch (values.kinds[k]) {
            case CellKind::Text:
              cell[j] <<= U(values.text(k));
              break;
            case CellKind::Empty:
            case CellKind::Error:
              break;
            default:
              cell[j] <<= values.numbers[k];
          }
        }
        out[i] = std::move(row);
      }
      CellRangeRef r{at.sheet, at.firstCol, static_cast<std::int32_t>(at.firstRow + first),
                     static_cast<std::int32_t>(at.firstCol + values.cols - 1),
                     static_cast<std::int32_t>(at.firstRow + first + count - 1)};
      Reference<sheet::XCellRangeData> data(impl_->range(r), UNO_QUERY_THROW);
      data->setDataArray(rows);
      progress.advance(count * values.cols);
    }
    // A void written by setDataArray does not leave a plain blank: clear those cells.
    for (std::int64_t k = 0; k < values.size(); ++k) {
      if (values.kinds[k] != CellKind::Empty && values.kinds[k] != CellKind::Error) continue;
      sal_Int32 col = at.firstCol + static_cast<sal_Int32>(k % values.cols);
      sal_Int32 row = at.firstRow + static_cast<sal_Int32>(k / values.cols);
      Reference<sheet::XSheetOperation> op(impl_->sheet(at.sheet)->getCellRangeByPosition(col, row, col, row),
                                           UNO_QUERY_THROW);
      op->clearContents(sheet::CellFlags::VALUE | sheet::CellFlags::STRING | sheet::CellFlags::FORMULA);
    }
    // Dates and truth values are numbers with their own format.
    Reference<util::XNumberFormatsSupplier> nfs(impl_->doc, UNO_QUERY_THROW);
    Reference<util::XNumberFormatTypes> types(nfs->getNumberFormats(), UNO_QUERY_THROW);
    lang::Locale locale;
    for (std::int64_t k = 0; k < values.size(); ++k) {
      CellKind kind = values.kinds[k];
      if (kind != CellKind::Date && kind != CellKind::Logical) continue;
      sal_Int32 key = types->getStandardFormat(
          kind == CellKind::Date ? util::NumberFormat::DATE : util::NumberFormat::LOGICAL, locale);
      Reference<table::XCell> cell = impl_->sheet(at.sheet)->getCellByPosition(
          at.firstCol + static_cast<sal_Int32>(k % values.cols), at.firstRow + static_cast<sal_Int32>(k / values.cols));
      Reference<beans::XPropertySet>(cell, UNO_QUERY_THROW)->setPropertyValue("NumberFormat", Any(key));
    }
  });
}

void Workbook::setFormula(int sheet, std::int32_t col, std::int32_t row, const std::string& formula) {
  Guard("writing a formula", [&] { impl_->sheet(sheet)->getCellByPosition(col, row)->setFormula(U(formula)); });
}

void Workbook::drawRectangle(int sheet) {
  Guard("drawing a rectangle", [&] {
    Reference<drawing::XShape> shape(impl_->factory->createInstance("com.sun.star.drawing.RectangleShape"),
                                     UNO_QUERY_THROW);
    Reference<drawing::XDrawPageSupplier> page(impl_->sheet(sheet), UNO_QUERY_THROW);
    Reference<drawing::XShapes>(page->getDrawPage(), UNO_QUERY_THROW)->add(shape);
    shape->setSize(awt::Size(2000, 1000));
    shape->setPosition(awt::Point(1000, 1000));
    Reference<view::XSelectionSupplier> sup(impl_->controller(), UNO_QUERY_THROW);
    sup->select(Any(shape));
  });
}

void Workbook::setModified(bool modified) {
  Guard("setting the modified flag", [&] {
    Reference<util::XModifiable>(impl_->model, UNO_QUERY_THROW)->setModified(modified);
  });
}

void Workbook::save(const std::string& path) {
  Guard("saving the workbook", [&] {
    Reference<frame::XStorable> store(impl_->model, UNO_QUERY_THROW);
    std::string filter = path.size() > 5 && path.substr(path.size() - 5) == ".xlsx" ? "Calc MS Excel 2007 XML"
                                                                                     : "calc8";
    Sequence<beans::PropertyValue> args(1);
    args[0] = Prop("FilterName", Any(U(filter)));
    store->storeToURL(U("file://" + path), args);
  });
}

void Workbook::close() {
  impl_->unwatch();
  try {
    Reference<util::XCloseable> c(impl_->model, UNO_QUERY);
    if (c.is()) c->close(true);
  } catch (const Exception&) {
  }
}

// ---- Reports, formats, highlighting ------------------------------------------------

namespace {

Reference<container::XIndexAccess> Sheets(Workbook::Impl& w) {
  return Reference<container::XIndexAccess>(w.doc->getSheets(), UNO_QUERY_THROW);
}

Reference<beans::XPropertySet> Props(const Reference<uno::XInterface>& x) {
  return Reference<beans::XPropertySet>(x, UNO_QUERY_THROW);
}

sal_Int32 Col(Rgb c) { return static_cast<sal_Int32>(c); }

table::BorderLine2 Line2(BorderLine line) {
  table::BorderLine2 l;
  l.Color = 0;
  l.InnerLineWidth = 0;
  l.OuterLineWidth = 0;
  l.LineDistance = 0;
  l.LineStyle = table::BorderLineStyle::NONE;
  l.LineWidth = 0;
  if (line == BorderLine::Thin) {
    l.OuterLineWidth = 26;  // Calc's "Thin", 0.75 pt
    l.LineWidth = 26;
    l.LineStyle = table::BorderLineStyle::SOLID;
  }
  return l;
}

Workbook::Line LineOf(const table::BorderLine2& l) {
  Workbook::Line r;
  r.width = l.LineStyle == table::BorderLineStyle::NONE ? 0 : std::max<sal_Int32>(l.LineWidth, l.OuterLineWidth);
  r.color = static_cast<Rgb>(l.Color) & 0xFFFFFFu;
  return r;
}

sal_Int32 NumberFormatKey(Workbook::Impl& w, const std::string& code) {
  Reference<util::XNumberFormatsSupplier> nfs(w.doc, UNO_QUERY_THROW);
  Reference<util::XNumberFormats> formats = nfs->getNumberFormats();
  lang::Locale locale;
  locale.Language = "en";
  locale.Country = "US";
  sal_Int32 key = formats->queryKey(U(code), locale, false);
  if (key == -1) key = formats->addNew(U(code), locale);
  return key;
}

Reference<sheet::XSheetCellRanges> RangesOf(Workbook::Impl& w, const std::vector<CellRangeRef>& areas) {
  Reference<sheet::XSheetCellRangeContainer> c(w.factory->createInstance("com.sun.star.sheet.SheetCellRanges"),
                                                UNO_QUERY_THROW);
  for (const CellRangeRef& a : areas) c->addRangeAddress(ToUno(a), false);
  return Reference<sheet::XSheetCellRanges>(c, UNO_QUERY_THROW);
}

Reference<sheet::XConditionalFormats> CondFormats(Workbook::Impl& w, int sheet) {
  return Reference<sheet::XConditionalFormats>(Props(w.sheet(sheet))->getPropertyValue("ConditionalFormats"),
                                               UNO_QUERY_THROW);
}

// The parts of `a` outside `cut`: up to four blocks (above, below, left, right).
std::vector<CellRangeRef> Subtract(const CellRangeRef& a, const CellRangeRef& cut) {
  std::optional<CellRangeRef> in = Intersect(a, cut);
  if (!in) return {a};
  std::vector<CellRangeRef> out;
  if (a.firstRow < in->firstRow) out.push_back({a.sheet, a.firstCol, a.firstRow, a.lastCol, in->firstRow - 1});
  if (in->lastRow < a.lastRow) out.push_back({a.sheet, a.firstCol, in->lastRow + 1, a.lastCol, a.lastRow});
  if (a.firstCol < in->firstCol) out.push_back({a.sheet, a.firstCol, in->firstRow, in->firstCol - 1, in->lastRow});
  if (in->lastCol < a.lastCol) out.push_back({a.sheet, in->lastCol + 1, in->firstRow, a.lastCol, in->lastRow});
  return out;
}

sal_Int32 OperatorOf(HighlightRule::Kind k) {
  switch (k) {
    case HighlightRule::Kind::TopN:
      return sheet::ConditionFormatOperator::TOP_N_ELEMENTS;
    case HighlightRule::Kind::BottomN:
      return sheet::ConditionFormatOperator::BOTTOM_N_ELEMENTS;
    case HighlightRule::Kind::TopPercent:
      return sheet::ConditionFormatOperator::TOP_N_PERCENT;
    case HighlightRule::Kind::BottomPercent:
      return sheet::ConditionFormatOperator::BOTTOM_N_PERCENT;
  }
  return sheet::ConditionFormatOperator::TOP_N_ELEMENTS;
}

// A cell style that sets only a rule's colours; found again by name only here, when it
// is made (a reloaded workbook renames it).
std::string HighlightStyle(Workbook::Impl& w, const HighlightRule& rule) {
  char name[64];
  std::snprintf(name, sizeof name, "Quantavue highlight %06X", rule.background);
  std::string n = name;
  if (rule.fontColor) {
    std::snprintf(name, sizeof name, " on %06X", *rule.fontColor);
    n += name;
  }
  Reference<style::XStyleFamiliesSupplier> sup(w.doc, UNO_QUERY_THROW);
  Reference<container::XNameContainer> styles(sup->getStyleFamilies()->getByName("CellStyles"), UNO_QUERY_THROW);
  if (!styles->hasByName(U(n))) {
    Reference<style::XStyle> s(w.factory->createInstance("com.sun.star.style.CellStyle"), UNO_QUERY_THROW);
    styles->insertByName(U(n), Any(s));
    Reference<beans::XPropertySet> p = Props(s);
    p->setPropertyValue("CellBackColor", Any(Col(rule.background)));
    p->setPropertyValue("IsCellBackgroundTransparent", Any(false));
    if (rule.fontColor) p->setPropertyValue("CharColor", Any(Col(*rule.fontColor)));
  }
  return n;
}

// Sets one property; a refusal names the property.
void SetProp(const Reference<beans::XPropertySet>& p, const char* name, const Any& value) {
  try {
    p->setPropertyValue(OUString::createFromAscii(name), value);
  } catch (const Exception& e) {
    throw OfficeError(std::string(name) + ": " + S(e.Message));
  }
}

Reference<chart2::XChartDocument> ChartDocument(Workbook::Impl& w, int sheet, std::string* name, int* count) {
  Reference<sheet::XSpreadsheet> sh = w.sheet(sheet);
  Reference<table::XTableChartsSupplier> sup(sh, UNO_QUERY_THROW);
  Reference<container::XIndexAccess> charts(sup->getCharts(), UNO_QUERY_THROW);
  if (count) *count = charts->getCount();
  if (charts->getCount() == 0) return {};
  Reference<container::XNamed> named(charts->getByIndex(0), UNO_QUERY_THROW);
  if (name) *name = S(named->getName());
  Reference<document::XEmbeddedObjectSupplier> eo(named, UNO_QUERY_THROW);
  return Reference<chart2::XChartDocument>(eo->getEmbeddedObject(), UNO_QUERY_THROW);
}

Reference<chart2::XCoordinateSystem> FirstCoordinateSystem(const Reference<chart2::XChartDocument>& doc) {
  Reference<chart2::XCoordinateSystemContainer> cs(doc->getFirstDiagram(), UNO_QUERY_THROW);
  return cs->getCoordinateSystems()[0];
}

Reference<chart2::XDataSeries> FirstSeries(const Reference<chart2::XChartDocument>& doc, Reference<chart2::XChartType>* type) {
  Reference<chart2::XChartTypeContainer> ct(FirstCoordinateSystem(doc), UNO_QUERY_THROW);
  Reference<chart2::XChartType> t = ct->getChartTypes()[0];
  if (type) *type = t;
  Reference<chart2::XDataSeriesContainer> sc(t, UNO_QUERY_THROW);
  Sequence<Reference<chart2::XDataSeries>> series = sc->getDataSeries();
  return series.getLength() > 0 ? series[0] : Reference<chart2::XDataSeries>();
}

}  // namespace

bool Workbook::sheetExists(const std::string& name) {
  try {
    return Guard("looking for a sheet", [&] { return bool(impl_->doc->getSheets()->hasByName(U(name))); });
  } catch (const OfficeError&) {
    return false;
  }
}

int Workbook::addSheetLast(const std::string& name) {
  return Guard("adding a sheet", [&] {
    sal_Int16 at = static_cast<sal_Int16>(Sheets(*impl_)->getCount());
    impl_->doc->getSheets()->insertNewByName(U(name), at);
    return static_cast<int>(at);
  });
}

void Workbook::format(const CellRangeRef& range, const CellFormat& f) {
  Guard("formatting cells", [&] {
    Reference<beans::XPropertySet> p = Props(impl_->range(range));
    if (f.background) {
      p->setPropertyValue("CellBackColor", Any(Col(*f.background)));
      p->setPropertyValue("IsCellBackgroundTransparent", Any(false));
    }
    if (f.bold) p->setPropertyValue("CharWeight", Any(*f.bold ? awt::FontWeight::BOLD : awt::FontWeight::NORMAL));
    if (f.fontColor) p->setPropertyValue("CharColor", Any(Col(*f.fontColor)));
    if (f.numberFormat) p->setPropertyValue("NumberFormat", Any(NumberFormatKey(*impl_, *f.numberFormat)));
    if (f.centredHorizontally)
      p->setPropertyValue("HoriJustify",
                          Any(*f.centredHorizontally ? table::CellHoriJustify_CENTER : table::CellHoriJustify_STANDARD));
    if (f.centredVertically)
      p->setPropertyValue("VertJustify", Any(*f.centredVertically ? table::CellVertJustify2::CENTER
                                                                  : table::CellVertJustify2::STANDARD));
    if (f.wrap) p->setPropertyValue("IsTextWrapped", Any(*f.wrap));
    if (f.underline)
      p->setPropertyValue("CharUnderline", Any(*f.underline ? awt::FontUnderline::SINGLE : awt::FontUnderline::NONE));
  });
}

void Workbook::setBorders(const CellRangeRef& range, const RangeBorders& b) {
  Guard("drawing borders", [&] {
    Reference<beans::XPropertySet> p = Props(impl_->range(range));
    table::TableBorder2 t;
    auto set = [](BorderLine l, table::BorderLine2& line, sal_Bool& valid) {
      valid = l != BorderLine::NotSet;
      line = Line2(l);
    };
    set(b.left, t.LeftLine, t.IsLeftLineValid);
    set(b.top, t.TopLine, t.IsTopLineValid);
    set(b.right, t.RightLine, t.IsRightLineValid);
    set(b.bottom, t.BottomLine, t.IsBottomLineValid);
    set(b.insideVertical, t.VerticalLine, t.IsVerticalLineValid);
    set(b.insideHorizontal, t.HorizontalLine, t.IsHorizontalLineValid);
    t.Distance = 0;
    t.IsDistanceValid = false;
    p->setPropertyValue("TableBorder2", Any(t));
    if (b.diagonalDown != BorderLine::NotSet) p->setPropertyValue("DiagonalTLBR2", Any(Line2(b.diagonalDown)));
    if (b.diagonalUp != BorderLine::NotSet) p->setPropertyValue("DiagonalBLTR2", Any(Line2(b.diagonalUp)));
  });
}

void Workbook::fitColumns(int sheet, std::int32_t firstCol, std::int32_t lastCol) {
  Guard("fitting column widths", [&] {
    Reference<table::XColumnRowRange> cr(impl_->sheet(sheet)->getCellRangeByPosition(firstCol, 0, lastCol, 0),
                                         UNO_QUERY_THROW);
    Props(cr->getColumns())->setPropertyValue("OptimalWidth", Any(true));
  });
}

void Workbook::setLeftToRight(int sheet) {
  Guard("setting the sheet's direction", [&] {
    Props(impl_->sheet(sheet))->setPropertyValue("TableLayout", Any(sal_Int16(text::WritingMode2::LR_TB)));
  });
}

void Workbook::showSheet(int sheet, const CellRangeRef& select, int zoomPercent) {
  Guard("showing the sheet", [&] {
    Reference<frame::XController> c = impl_->controller();
    Reference<sheet::XSpreadsheetView>(c, UNO_QUERY_THROW)->setActiveSheet(impl_->sheet(sheet));
    Reference<view::XSelectionSupplier>(c, UNO_QUERY_THROW)->select(Any(impl_->range(select)));
    Reference<beans::XPropertySet> p = Props(c);
    p->setPropertyValue("ZoomType", Any(sal_Int16(view::DocumentZoomType::BY_VALUE)));
    p->setPropertyValue("ZoomValue", Any(sal_Int16(zoomPercent)));
  });
}

int Workbook::zoom() {
  return Guard("reading the zoom", [&] {
    sal_Int16 z = 0;
    Props(impl_->controller())->getPropertyValue("ZoomValue") >>= z;
    return static_cast<int>(z);
  });
}

void Workbook::addColumnChart(int sheet, const ColumnChartSpec& settings) {
  Guard("adding the chart", [&] {
    Reference<sheet::XSpreadsheet> sh = impl_->sheet(sheet);
    Reference<beans::XPropertySet> area = Props(impl_->range(settings.area));
    awt::Point pos;
    awt::Size size;
    area->getPropertyValue("Position") >>= pos;
    area->getPropertyValue("Size") >>= size;
    awt::Rectangle rect(pos.X, pos.Y, size.Width, size.Height);
    // Row 1 gives the categories and column B the series' name: one series from row 3.
    CellRangeRef header{sheet, settings.seriesName.firstCol, settings.categories.firstRow, settings.categories.lastCol,
                        settings.categories.lastRow};
    CellRangeRef data{sheet, settings.seriesName.firstCol, settings.values.firstRow, settings.values.lastCol, settings.values.lastRow};
    Sequence<table::CellRangeAddress> ranges(2);
    ranges[0] = ToUno(header);
    ranges[1] = ToUno(data);
    Reference<table::XTableChartsSupplier> sup(sh, UNO_QUERY_THROW);
    Reference<table::XTableCharts> charts = sup->getCharts();
    charts->addNewByName(U(settings.name), rect, ranges, true, true);
    Reference<document::XEmbeddedObjectSupplier> eo(charts->getByName(U(settings.name)), UNO_QUERY_THROW);
    Reference<chart::XChartDocument> old(eo->getEmbeddedObject(), UNO_QUERY_THROW);
    Reference<frame::XModel> chartModel(old, UNO_QUERY_THROW);
    chartModel->lockControllers();
    struct Unlock {
      Reference<frame::XModel> m;
      ~Unlock() {
        try {
          m->unlockControllers();
        } catch (const Exception&) {
        }
      }
    } unlock{chartModel};
    SetProp(Props(old->getDiagram()), "DataRowSource", Any(chart::ChartDataRowSource_ROWS));
    SetProp(Props(old), "HasLegend", Any(false));
    SetProp(Props(old), "HasMainTitle", Any(false));

    Reference<chart2::XChartDocument> doc(old, UNO_QUERY_THROW);
    Reference<chart2::XCoordinateSystem> cs = FirstCoordinateSystem(doc);
    Reference<chart2::XAxis> valueAxis = cs->getAxisByDimension(1, 0);
    chart2::ScaleData scale = valueAxis->getScaleData();
    scale.Minimum <<= 0.0;
    scale.Maximum <<= settings.valueMax;
    valueAxis->setScaleData(scale);
    SetProp(Props(valueAxis), "Show", Any(false));
    SetProp(Props(valueAxis->getGridProperties()), "Show", Any(false));
    Reference<beans::XPropertySet> cat = Props(cs->getAxisByDimension(0, 0));
    SetProp(cat, "CharFontName", Any(U(settings.tickFont)));
    SetProp(cat, "CharHeight", Any(float(settings.tickSize)));
    SetProp(cat, "CharColor", Any(Col(settings.tickColor)));
    SetProp(cat, "LineColor", Any(Col(settings.axisLineColor)));
    Reference<beans::XPropertySet> wall = Props(doc->getFirstDiagram()->getWall());
    SetProp(wall, "FillStyle", Any(drawing::FillStyle_SOLID));
    SetProp(wall, "FillColor", Any(Col(settings.wallColor)));
    Reference<beans::XPropertySet> page = Props(doc->getPageBackground());
    SetProp(page, "FillStyle", Any(drawing::FillStyle_SOLID));
    SetProp(page, "FillColor", Any(Col(settings.pageColor)));

    Reference<chart2::XChartType> type;
    Reference<chart2::XDataSeries> series = FirstSeries(doc, &type);
    Sequence<sal_Int32> gap(1);
    gap[0] = settings.gapWidth;
    SetProp(Props(type), "GapwidthSequence", Any(gap));
    if (!series.is()) throw OfficeError("The chart has no series");
    Reference<beans::XPropertySet> s = Props(series);
    // One colour fading to a lighter tint of itself across each bar.
    auto lighter = [](Rgb c) {
      Rgb r = (c >> 16) & 0xFF, g = (c >> 8) & 0xFF, b = c & 0xFF;
      auto up = [](Rgb v) { return v + (255 - v) * 3 / 5; };
      return (up(r) << 16) | (up(g) << 8) | up(b);
    };
    awt::Gradient grad;
    grad.Style = awt::GradientStyle_AXIAL;
    grad.StartColor = Col(settings.barColor);
    grad.EndColor = Col(lighter(settings.barColor));
    grad.Angle = 900;
    grad.Border = 0;
    grad.XOffset = 50;
    grad.YOffset = 50;
    grad.StartIntensity = 100;
    grad.EndIntensity = 100;
    grad.StepCount = 0;
    // A series names its gradient in the chart's gradient table.
    Reference<container::XNameContainer> gradients(
        Reference<lang::XMultiServiceFactory>(doc, UNO_QUERY_THROW)->createInstance("com.sun.star.drawing.GradientTable"),
        UNO_QUERY_THROW);
    const OUString gradientName("Quantavue bars");
    if (gradients->hasByName(gradientName))
      gradients->replaceByName(gradientName, Any(grad));
    else
      gradients->insertByName(gradientName, Any(grad));
    SetProp(s, "FillStyle", Any(drawing::FillStyle_GRADIENT));
    SetProp(s, "FillGradientName", Any(gradientName));
    SetProp(s, "BorderStyle", Any(drawing::LineStyle_SOLID));
    SetProp(s, "BorderColor", Any(Col(settings.barOutlineColor)));
    chart2::DataPointLabel label(true, false, false, false, false, false);
    SetProp(s, "Label", Any(label));
    SetProp(s, "LabelPlacement", Any(chart::DataLabelPlacement::OUTSIDE));
    SetProp(s, "CharFontName", Any(U(settings.labelFont)));
    SetProp(s, "CharHeight", Any(float(settings.labelSize)));
    SetProp(s, "CharWeight", Any(settings.labelBold ? awt::FontWeight::BOLD : awt::FontWeight::NORMAL));
    SetProp(s, "CharColor", Any(Col(settings.labelColor)));
  });
}

Workbook::ChartLook Workbook::chart(int sheet) {
  return Guard("reading the chart", [&] {
    ChartLook r;
    Props(impl_->sheet(sheet))->getPropertyValue("TableLayout") >>= r.tableLayout;
    Reference<chart2::XChartDocument> doc = ChartDocument(*impl_, sheet, &r.name, &r.count);
    if (!doc.is()) return r;
    Reference<drawing::XDrawPageSupplier> dp(impl_->sheet(sheet), UNO_QUERY_THROW);
    Reference<container::XIndexAccess> shapes(dp->getDrawPage(), UNO_QUERY_THROW);
    for (sal_Int32 i = 0; i < shapes->getCount(); ++i) {
      Reference<drawing::XShape> shape(shapes->getByIndex(i), UNO_QUERY_THROW);
      Reference<beans::XPropertySet> sp = Props(shape);
      OUString cls;
      if (sp->getPropertySetInfo()->hasPropertyByName("CLSID")) sp->getPropertyValue("CLSID") >>= cls;
      if (cls.isEmpty()) continue;
      r.rect = Rect{shape->getPosition().X, shape->getPosition().Y, shape->getSize().Width, shape->getSize().Height};
    }
    Reference<chart::XChartDocument> old(doc, UNO_QUERY_THROW);
    Props(old)->getPropertyValue("HasLegend") >>= r.legendShown;
    Reference<chart2::XCoordinateSystem> cs = FirstCoordinateSystem(doc);
    Reference<chart2::XAxis> valueAxis = cs->getAxisByDimension(1, 0);
    chart2::ScaleData scale = valueAxis->getScaleData();
    scale.Minimum >>= r.valueMin;
    scale.Maximum >>= r.valueMax;
    Props(valueAxis)->getPropertyValue("Show") >>= r.valueAxisShown;
    Props(valueAxis->getGridProperties())->getPropertyValue("Show") >>= r.valueGridShown;
    Reference<beans::XPropertySet> cat = Props(cs->getAxisByDimension(0, 0));
    OUString font;
    float h = 0;
    cat->getPropertyValue("CharFontName") >>= font;
    cat->getPropertyValue("CharHeight") >>= h;
    r.tickFont = S(font);
    r.tickSize = h;
    sal_Int32 c = 0;
    cat->getPropertyValue("CharColor") >>= c;
    r.tickColor = static_cast<Rgb>(c);
    cat->getPropertyValue("LineColor") >>= c;
    r.axisLineColor = static_cast<Rgb>(c);
    Props(doc->getFirstDiagram()->getWall())->getPropertyValue("FillColor") >>= c;
    r.wallColor = static_cast<Rgb>(c);
    Props(doc->getPageBackground())->getPropertyValue("FillColor") >>= c;
    r.pageColor = static_cast<Rgb>(c);
    Reference<chart2::XChartType> type;
    Reference<chart2::XDataSeries> series = FirstSeries(doc, &type);
    r.columns = type->getChartType() == "com.sun.star.chart2.ColumnChartType";
    if (r.columns) {
      bool swap = false;
      Props(cs)->getPropertyValue("SwapXAndYAxis") >>= swap;
      r.columns = !swap;
    }
    Sequence<sal_Int32> gap;
    Props(type)->getPropertyValue("GapwidthSequence") >>= gap;
    if (gap.getLength() > 0) r.gapWidth = gap[0];
    Reference<chart2::XDataSeriesContainer> sc(type, UNO_QUERY_THROW);
    r.series = sc->getDataSeries().getLength();
    if (!series.is()) return r;
    Reference<chart2::data::XDataSource> src(series, UNO_QUERY_THROW);
    for (const auto& seq : src->getDataSequences()) {
      Reference<beans::XPropertySet> vp = Props(seq->getValues());
      OUString role;
      vp->getPropertyValue("Role") >>= role;
      if (role != "values-y") continue;
      for (const Any& v : seq->getValues()->getData()) {
        double d = 0;
        v >>= d;
        r.values.push_back(d);
      }
      if (seq->getLabel().is())
        for (const Any& v : seq->getLabel()->getData()) {
          OUString t;
          v >>= t;
          r.seriesName += S(t);
        }
    }
    Reference<chart2::XAxis> catAxis = cs->getAxisByDimension(0, 0);
    chart2::ScaleData cscale = catAxis->getScaleData();
    if (cscale.Categories.is() && cscale.Categories->getValues().is())
      for (const Any& v : cscale.Categories->getValues()->getData()) {
        OUString t;
        v >>= t;
        r.categories.push_back(S(t));
      }
    Reference<beans::XPropertySet> s = Props(series);
    drawing::FillStyle fs = drawing::FillStyle_NONE;
    s->getPropertyValue("FillStyle") >>= fs;
    r.gradient = fs == drawing::FillStyle_GRADIENT;
    awt::Gradient grad;
    OUString gradientName;
    s->getPropertyValue("FillGradientName") >>= gradientName;
    Reference<container::XNameAccess> gradients(
        Reference<lang::XMultiServiceFactory>(doc, UNO_QUERY_THROW)->createInstance("com.sun.star.drawing.GradientTable"),
        UNO_QUERY_THROW);
    if (gradients->hasByName(gradientName)) gradients->getByName(gradientName) >>= grad;
    r.gradientStart = static_cast<Rgb>(grad.StartColor);
    r.gradientEnd = static_cast<Rgb>(grad.EndColor);
    drawing::LineStyle ls = drawing::LineStyle_NONE;
    s->getPropertyValue("BorderStyle") >>= ls;
    r.outlineSolid = ls == drawing::LineStyle_SOLID;
    s->getPropertyValue("BorderColor") >>= c;
    r.outlineColor = static_cast<Rgb>(c);
    chart2::DataPointLabel label;
    s->getPropertyValue("Label") >>= label;
    r.labelNumberOnly = label.ShowNumber && !label.ShowNumberInPercent && !label.ShowCategoryName &&
                        !label.ShowLegendSymbol && !label.ShowSeriesName;
    s->getPropertyValue("CharFontName") >>= font;
    r.labelFont = S(font);
    s->getPropertyValue("CharHeight") >>= h;
    r.labelSize = h;
    float weight = 0;
    s->getPropertyValue("CharWeight") >>= weight;
    r.labelBold = weight >= awt::FontWeight::BOLD;
    s->getPropertyValue("CharColor") >>= c;
    r.labelColor = static_cast<Rgb>(c);
    return r;
  });
}

void Workbook::addHighlight(const CellRangeRef& range, const std::vector<HighlightRule>& rules) {
  if (rules.empty()) return;
  Guard("highlighting the range", [&] {
    // A format made by XConditionalFormats::createByRange is stored but not drawn until the
    // document is loaded again: the cells are not told they carry it. The range's own
    // ConditionalFormat property tells them, so the format is made there, with one entry
    // that is never true, and that entry then becomes the first rule.
    Reference<beans::XPropertySet> cells = Props(impl_->range(range));
    Reference<sheet::XSheetConditionalEntries> made(cells->getPropertyValue("ConditionalFormat"), UNO_QUERY_THROW);
    made->clear();
    Sequence<beans::PropertyValue> never(3);
    never[0] = Prop("Operator", Any(sheet::ConditionOperator_FORMULA));
    never[1] = Prop("Formula1", Any(OUString("0")));
    never[2] = Prop("StyleName", Any(U(HighlightStyle(*impl_, rules.front()))));
    made->addNew(never);
    cells->setPropertyValue("ConditionalFormat", Any(made));

    // The newest format on exactly this range is the one just made.
    Reference<sheet::XConditionalFormat> ours;
    sal_Int32 newest = -1;
    for (const Reference<sheet::XConditionalFormat>& f : CondFormats(*impl_, range.sheet)->getConditionalFormats()) {
      Reference<beans::XPropertySet> fp = Props(f);
      Reference<sheet::XSheetCellRanges> where(fp->getPropertyValue("Range"), UNO_QUERY);
      sal_Int32 fid = -1;
      fp->getPropertyValue("ID") >>= fid;
      if (!where.is() || fid <= newest) continue;
      Sequence<table::CellRangeAddress> a = where->getRangeAddresses();
      if (a.getLength() == 1 && FromUno(a[0]) == range) {
        ours = f;
        newest = fid;
      }
    }
    if (!ours.is()) throw OfficeError("The new conditional format was not found");
    Reference<container::XIndexAccess> entries(ours, UNO_QUERY_THROW);
    for (std::size_t i = 0; i < rules.size(); ++i) {
      if (i > 0) ours->createEntry(sheet::ConditionEntryType::CONDITION, entries->getCount());
      Reference<beans::XPropertySet> e =
          Props(Reference<uno::XInterface>(entries->getByIndex(static_cast<sal_Int32>(i)), UNO_QUERY_THROW));
      e->setPropertyValue("Operator", Any(OperatorOf(rules[i].kind)));
      e->setPropertyValue("Formula1", Any(U(std::to_string(rules[i].rank))));
      e->setPropertyValue("StyleName", Any(U(HighlightStyle(*impl_, rules[i]))));
    }
  });
}

void Workbook::clearHighlights(const CellRangeRef& range) {
  Guard("clearing the highlight", [&] {
    Reference<sheet::XConditionalFormats> formats = CondFormats(*impl_, range.sheet);
    for (const Reference<sheet::XConditionalFormat>& f : formats->getConditionalFormats()) {
      Reference<beans::XPropertySet> p = Props(f);
      Reference<sheet::XSheetCellRanges> cells(p->getPropertyValue("Range"), UNO_QUERY_THROW);
      std::vector<CellRangeRef> keep;
      bool touched = false;
      for (const table::CellRangeAddress& a : cells->getRangeAddresses()) {
        CellRangeRef r = FromUno(a);
        std::vector<CellRangeRef> rest = Subtract(r, range);
        touched = touched || rest.size() != 1 || !(rest[0] == r);
        keep.insert(keep.end(), rest.begin(), rest.end());
      }
      if (!touched) continue;
      sal_Int32 id = -1;
      p->getPropertyValue("ID") >>= id;
      if (keep.empty())
        formats->removeByID(id);
      else
        p->setPropertyValue("Range", Any(RangesOf(*impl_, keep)));
    }
  });
}

std::vector<Workbook::HighlightFormat> Workbook::highlights(int sheet) {
  return Guard("reading conditional formats", [&] {
    std::vector<HighlightFormat> out;
    Reference<style::XStyleFamiliesSupplier> sup(impl_->doc, UNO_QUERY_THROW);
    Reference<container::XNameAccess> styles(sup->getStyleFamilies()->getByName("CellStyles"), UNO_QUERY_THROW);
    for (const Reference<sheet::XConditionalFormat>& f : CondFormats(*impl_, sheet)->getConditionalFormats()) {
      HighlightFormat h;
      Reference<sheet::XSheetCellRanges> cells(Props(f)->getPropertyValue("Range"), UNO_QUERY_THROW);
      for (const table::CellRangeAddress& a : cells->getRangeAddresses()) h.ranges.push_back(FromUno(a));
      if (!h.ranges.empty()) {
        const CellRangeRef& r = h.ranges.front();
        Reference<container::XIndexAccess> known(
            Props(impl_->range({sheet, r.firstCol, r.firstRow, r.firstCol, r.firstRow}))->getPropertyValue("ConditionalFormat"),
            UNO_QUERY);
        h.drawn = known.is() && known->getCount() > 0;
      }
      Reference<container::XIndexAccess> entries(f, UNO_QUERY_THROW);
      for (sal_Int32 i = 0; i < entries->getCount(); ++i) {
        Reference<beans::XPropertySet> e(entries->getByIndex(i), UNO_QUERY);
        if (!e.is() || !e->getPropertySetInfo()->hasPropertyByName("Operator")) continue;
        HighlightRule r;
        sal_Int32 op = -1;
        e->getPropertyValue("Operator") >>= op;
        switch (op) {
          case sheet::ConditionFormatOperator::TOP_N_ELEMENTS: r.kind = HighlightRule::Kind::TopN; break;
          case sheet::ConditionFormatOperator::BOTTOM_N_ELEMENTS: r.kind = HighlightRule::Kind::BottomN; break;
          case sheet::ConditionFormatOperator::TOP_N_PERCENT: r.kind = HighlightRule::Kind::TopPercent; break;
          case sheet::ConditionFormatOperator::BOTTOM_N_PERCENT: r.kind = HighlightRule::Kind::BottomPercent; break;
          default: r.rank = -1;
        }
        OUString formula, style;
        e->getPropertyValue("Formula1") >>= formula;
        e->getPropertyValue("StyleName") >>= style;
        if (r.rank != -1) r.rank = formula.toInt32();
        if (styles->hasByName(style)) {
          Reference<beans::XPropertySet> sp(styles->getByName(style), UNO_QUERY_THROW);
          sal_Int32 c = 0;
          sp->getPropertyValue("CellBackColor") >>= c;
          r.background = static_cast<Rgb>(c);
          Reference<beans::XPropertyState> st(sp, UNO_QUERY);
          if (st.is() && st->getPropertyState("CharColor") == beans::PropertyState_DIRECT_VALUE) {
            sp->getPropertyValue("CharColor") >>= c;
            r.fontColor = static_cast<Rgb>(c);
          }
        }
        h.rules.push_back(r);
      }
      out.push_back(std::move(h));
    }
    return out;
  });
}

Workbook::ScreenLock::ScreenLock(Workbook& book) : book_(book) {
  Guard("holding off screen updates", [&] { book_.impl().model->lockControllers(); });
  locked_ = true;
}

Workbook::ScreenLock::~ScreenLock() {
  if (!locked_) return;
  try {
    Guard("resuming screen updates", [&] { book_.impl().model->unlockControllers(); });
  } catch (const OfficeError&) {
  }
}

bool Workbook::controllersLocked() {
  return Guard("reading the screen lock", [&] { return bool(impl_->model->hasControllersLocked()); });
}

Workbook::CellLook Workbook::look(int sheet, std::int32_t col, std::int32_t row) {
  return Guard("reading a cell's format", [&] {
    CellLook l;
    Reference<beans::XPropertySet> p = Props(impl_->sheet(sheet)->getCellByPosition(col, row));
    float weight = 0;
    p->getPropertyValue("CharWeight") >>= weight;
    l.bold = weight >= awt::FontWeight::BOLD;
    sal_Int16 underline = 0;
    p->getPropertyValue("CharUnderline") >>= underline;
    l.underline = underline == awt::FontUnderline::SINGLE;
    sal_Int32 c = 0;
    p->getPropertyValue("CharColor") >>= c;
    if (c != -1) l.fontColor = static_cast<Rgb>(c) & 0xFFFFFFu;
    bool transparent = true;
    p->getPropertyValue("IsCellBackgroundTransparent") >>= transparent;
    p->getPropertyValue("CellBackColor") >>= c;
    if (!transparent) l.background = static_cast<Rgb>(c) & 0xFFFFFFu;
    sal_Int32 key = 0;
    p->getPropertyValue("NumberFormat") >>= key;
    Reference<util::XNumberFormatsSupplier> nfs(impl_->doc, UNO_QUERY_THROW);
    OUString code;
    nfs->getNumberFormats()->getByKey(key)->getPropertyValue("FormatString") >>= code;
    l.numberFormat = S(code);
    table::CellHoriJustify hj = table::CellHoriJustify_STANDARD;
    p->getPropertyValue("HoriJustify") >>= hj;
    l.centredHorizontally = hj == table::CellHoriJustify_CENTER;
    sal_Int32 vj = 0;
    p->getPropertyValue("VertJustify") >>= vj;
    l.centredVertically = vj == table::CellVertJustify2::CENTER;
    p->getPropertyValue("IsTextWrapped") >>= l.wrap;
    table::BorderLine2 b;
    p->getPropertyValue("LeftBorder2") >>= b;
    l.left = LineOf(b);
    p->getPropertyValue("TopBorder2") >>= b;
    l.top = LineOf(b);
    p->getPropertyValue("RightBorder2") >>= b;
    l.right = LineOf(b);
    p->getPropertyValue("BottomBorder2") >>= b;
    l.bottom = LineOf(b);
    p->getPropertyValue("DiagonalTLBR2") >>= b;
    l.diagonalDown = LineOf(b);
    p->getPropertyValue("DiagonalBLTR2") >>= b;
    l.diagonalUp = LineOf(b);
    return l;
  });
}

bool Workbook::columnFitted(int sheet, std::int32_t col) {
  return Guard("reading a column's width", [&] {
    Reference<table::XColumnRowRange> cr(impl_->sheet(sheet)->getCellRangeByPosition(col, 0, col, 0), UNO_QUERY_THROW);
    bool optimal = false;
    Props(cr->getColumns())->getPropertyValue("OptimalWidth") >>= optimal;
    return optimal;
  });
}

void Workbook::exportPicture(int sheet, const std::string& path) {
  Guard("exporting a picture", [&] {
    // The picture is of the selection: the sheet's used area.
    Reference<sheet::XSheetCellCursor> cursor = impl_->sheet(sheet)->createCursor();
    Reference<sheet::XUsedAreaCursor> used(cursor, UNO_QUERY_THROW);
    used->gotoStartOfUsedArea(false);
    used->gotoEndOfUsedArea(true);
    Reference<sheet::XCellRangeAddressable> area(cursor, UNO_QUERY_THROW);
    table::CellRangeAddress a = area->getRangeAddress();
    a.StartColumn = 0;
    a.StartRow = 0;
    Reference<frame::XController> c = impl_->controller();
    Reference<sheet::XSpreadsheetView>(c, UNO_QUERY_THROW)->setActiveSheet(impl_->sheet(sheet));
    Reference<view::XSelectionSupplier>(c, UNO_QUERY_THROW)->select(Any(impl_->range(FromUno(a))));
    Sequence<beans::PropertyValue> args(2);
    args[0] = Prop("FilterName", Any(OUString("calc_png_Export")));
    args[1] = Prop("SelectionOnly", Any(true));
    Reference<frame::XStorable>(impl_->model, UNO_QUERY_THROW)->storeToURL(U("file://" + path), args);
  });
}

Workbook::Rect Workbook::cellsRect(const CellRangeRef& range) {
  return Guard("reading a range's place", [&] {
    Reference<beans::XPropertySet> p = Props(impl_->range(range));
    awt::Point pos;
    awt::Size size;
    p->getPropertyValue("Position") >>= pos;
    p->getPropertyValue("Size") >>= size;
    return Rect{pos.X, pos.Y, size.Width, size.Height};
  });
}

std::vector<std::string> Workbook::formulas(const CellRangeRef& range) {
  return Guard("reading formulas", [&] {
    std::vector<std::string> out;
    Reference<sheet::XCellRangeFormula> f(impl_->range(range), UNO_QUERY_THROW);
    for (const Sequence<OUString>& row : f->getFormulaArray())
      for (const OUString& s : row) out.push_back(S(s));
    return out;
  });
}

}  // namespace qv
