#pragma once

#include <string>
#include <string_view>

namespace vemra {

// How a highlighted document shows its hits. Text in and out is in the database's code page; hits
// are numbered from 1 through a document. Read-only: any thread may use it.
class HitStyle {
 public:
  virtual ~HitStyle() = default;
  // What stands before and after the words of a hit.
  virtual void AppendOpening(int hit, std::string& out) const = 0;
  virtual void AppendClosing(int hit, std::string& out) const = 0;
  // Document text that is no markup, escaped as the style needs it.
  virtual void AppendText(std::string_view text, std::string& out) const = 0;
  // What is written before and after markup that stands within a hit.
  virtual void AppendPause(std::string& /*out*/) const {}
  virtual void AppendResume(std::string& /*out*/) const {}
  // Whether a document that has markup keeps it. Otherwise its text is laid out in lines.
  virtual bool KeepsMarkup() const { return false; }
  // What ends a document with that many hits.
  virtual void AppendEnd(int hits, std::string& out) const = 0;
};

// For plain text: "[3]word".
class BracketStyle : public HitStyle {
 public:
  void AppendOpening(int hit, std::string& out) const override;
  void AppendClosing(int hit, std::string& out) const override;
  void AppendText(std::string_view text, std::string& out) const override;
  void AppendEnd(int hits, std::string& out) const override;
};

// For a terminal with the ANSI colour sequences: bold red, as grep shows matches.
class AnsiStyle : public HitStyle {
 public:
  void AppendOpening(int hit, std::string& out) const override;
  void AppendClosing(int hit, std::string& out) const override;
  void AppendText(std::string_view text, std::string& out) const override;
  void AppendEnd(int hits, std::string& out) const override;
};

// For a page: <mark id="hit3">, with links to the hits before and after, within the markup of the
// document. The link of the last hit leads to the anchor that AppendEnd writes.
class HtmlStyle : public HitStyle {
 public:
  void AppendOpening(int hit, std::string& out) const override;
  void AppendClosing(int hit, std::string& out) const override;
  void AppendText(std::string_view text, std::string& out) const override;
  void AppendPause(std::string& out) const override;
  void AppendResume(std::string& out) const override;
  bool KeepsMarkup() const override { return true; }
  void AppendEnd(int hits, std::string& out) const override;
};

}  // namespace vemra
