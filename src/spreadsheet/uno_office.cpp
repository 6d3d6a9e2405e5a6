// The object model over the office's UNO API. Every call that reaches the office is
// wrapped so that a failure becomes an OfficeError, never a crash.
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
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
    Sequence<Sequence<Any>> rows(static_cast<sal_Int32>(values.rows));
    for (std::int64_t i = 0; i < values.rows; ++i) {
      Sequence<Any> row(static_cast<sal_Int32>(values.cols));
      for (std::int64_t j = 0; j < values.cols; ++j) {
        std::int64_t k = i * values.cols + j;
        switch (values.kinds[k]) {
          case CellKind::Text:
            row[j] <<= U(values.text(k));
            break;
          case CellKind::Empty:
          case CellKind::Error:
            break;
          default:
            row[j] <<= values.numbers[k];
        }
      }
      rows[static_cast<sal_Int32>(i)] = row;
    }
    CellRangeRef r{at.sheet, at.firstCol, at.firstRow, static_cast<std::int32_t>(at.firstCol + values.cols - 1),
                   static_cast<std::int32_t>(at.firstRow + values.rows - 1)};
    Reference<sheet::XCellRangeData> data(impl_->range(r), UNO_QUERY_THROW);
    data->setDataArray(rows);
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

}  // namespace qv
