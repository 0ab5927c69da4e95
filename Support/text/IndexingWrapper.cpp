#include "Support/text/IndexingWrapper.h"

namespace vemra {

void TavoIndexingWrapper::AddMessage(const char* text, unsigned long level) const {
  if (on_AddMessage != nullptr) on_AddMessage(text, level);
}

std::uint32_t TavoIndexingWrapper::newtxtno(unsigned short value) {
  if (on_newtxtno != nullptr) textno = on_newtxtno(value);
  return textno;
}

void TavoIndexingWrapper::addtext_newtext() const {
  if (on_addtext_newtext != nullptr) on_addtext_newtext(textno);
}

void TavoIndexingWrapper::fulllist_newtext() const {
  fulllist_newtext(textno);
}

void TavoIndexingWrapper::fulllist_newtext(std::uint32_t text) const {
  if (on_fulllist_newtext != nullptr) on_fulllist_newtext(text);
}

void TavoIndexingWrapper::addhead(const char* text, int n) const {
  if (on_addhead != nullptr) on_addhead(text, n, textno);
}

void TavoIndexingWrapper::addtext(const char* text, std::uint32_t n) const {
  if (on_addtext != nullptr) on_addtext(text, n);
}

std::uint32_t TavoIndexingWrapper::addentry(unsigned char* entry) const {
  return on_addentry != nullptr ? on_addentry(entry) : 0;
}

void TavoIndexingWrapper::fulllist_newparagraph() const {
  if (on_fulllist_newparagraph != nullptr) on_fulllist_newparagraph();
}

void TavoIndexingWrapper::fulllist_newsentence() const {
  if (on_fulllist_newsentence != nullptr) on_fulllist_newsentence();
}

void TavoIndexingWrapper::makesort_addkey(const char* key) const {
  if (on_makesort_addkey != nullptr) on_makesort_addkey(textno, key);
}

}  // namespace vemra
