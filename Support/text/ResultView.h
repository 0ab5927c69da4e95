#pragma once

#include <string>
#include <string_view>

#include "Support/Export.h"
#include "Support/text/TextRange.h"
#include "Support/text/ViewDocument.h"
#include "Support/text/ViewLayout.h"

namespace vemra {

class CTavoResultView;
class TavoLangPack;

// Hears of the links that are pressed in a view.
class SUPPORT_API TavoViewOwner {
 public:
  virtual ~TavoViewOwner() = default;
  // target as the document has it. The call may replace the contents of the view or delete it.
  virtual void OnLinkPressed(CTavoResultView& view, const std::string& target) = 0;
};

// The view in which a highlighted document is shown: the document, the selection, the zoom, and
// what is done with them. It has no window of its own; a window of a system derives from it, draws
// what it holds, calls its operations, and hears of every change through OnChange.
//
// A parser of TavoTHWrapper::GetViewParser fills it, see TavoTHWrapper::GetView. Positions are
// bytes of the document's text. Used by one thread at a time.
class SUPPORT_API CTavoResultView {
 public:
  // What OnChange is told.
  enum Change { kContentsChanged, kSelectionChanged, kZoomChanged };

  enum FindFlags { kFindForward = 0, kFindBackward = 1, kFindMatchCase = 2 };
  enum FindResult {
    kNotFound = 0,
    kFound = 1,
    kFoundWrapped = 2,  // only beyond the end of the text, or its start
  };

  static constexpr int kSmallestZoom = 25;
  static constexpr int kLargestZoom = 500;

  // owner, which may be null, is a loan until another is set.
  explicit CTavoResultView(TavoViewOwner* owner = nullptr);
  CTavoResultView(const CTavoResultView&) = delete;
  CTavoResultView& operator=(const CTavoResultView&) = delete;
  virtual ~CTavoResultView();

  void SetOwner(TavoViewOwner* owner) { owner_ = owner; }
  TavoViewOwner* GetOwner() const { return owner_; }

  // Shows another document, with the selection at its start; the zoom stays. pack, whose rules tell
  // which letters differ in case only, is a loan until the next call; null for the built-in one.
  void ReplaceContents(TavoViewDocument document, const TavoLangPack* pack = nullptr);
  // A loan until the contents are replaced.
  const TavoViewDocument& GetDocument() const { return document_; }

  // The selection: empty at the start, and at the place where the last jump or find has gone to. A
  // range outside the text is cut to what is inside.
  const TavoTextRange& GetSelection() const { return selection_; }
  void Select(const TavoTextRange& range);

  // Jumps select the hit. Next and previous go from the selection and stop at the last and the
  // first hit. 0, with the selection unchanged, when there is none.
  int GoToHit(int hit);  // counted from 0
  int GoToFirstHit() { return GoToHit(0); }
  int GoToLastHit() { return GoToHit(document_.GetHitsNumber() - 1); }
  int GoToNextHit();
  int GoToPreviousHit();
  int GetCurrentHit() const;  // the one that is selected, or -1

  // Finds text, of any bytes. Forward: the first place that starts at or after from, or else the
  // first of the document; backward: the last that ends at or before from, or else the last of the
  // document. found is set when there is one. Without kFindMatchCase letters match in either case,
  // by the rules of the pack. Takes time linear in the document.
  FindResult Find(std::string_view text, int from, int flags, TavoTextRange& found) const;
  // The same from the selection's end, or backward from its start, and selects what is found: asked
  // again it goes from place to place, around the document.
  FindResult FindNext(std::string_view text, int flags);

  // The size at which the document is shown, in percent: 100 at first, kSmallestZoom to
  // kLargestZoom. SetZoom takes any percentage to the nearest within these; ZoomIn and ZoomOut go
  // to the next larger and smaller of a fixed row of steps, and return 0 when there is none.
  int GetZoom() const { return zoom_; }
  void SetZoom(int percent);
  int ZoomIn();
  int ZoomOut();

  // The pages of the document for a printer with so many columns and lines to the page. A loan of
  // the document: valid until the contents are replaced.
  TavoViewLayout MakePages(int columns, int linesPerPage) const;

  // A press at a position of the text: when a link is there, the owner is called, if there is one,
  // and the result is 1; else 0. After a result of 1 the view may be gone: see TavoViewOwner.
  int Press(int position);

 protected:
  // Something else is to be drawn. Does nothing here; called at the end of each change, and only
  // when there is one.
  virtual void OnChange(Change change);

 private:
  TavoViewOwner* owner_;
  TavoViewDocument document_;
  const TavoLangPack* pack_;
  TavoTextRange selection_;
  int zoom_ = 100;
};

}  // namespace vemra
