#pragma once

// The text engine: from raw text to words, sentences and paragraphs, and on to an index or to
// highlighted output.

#include "Support/text/BreakList.h"
#include "Support/text/BufferedOutput.h"
#include "Support/text/Entity.h"
#include "Support/text/HighlightSearch.h"
#include "Support/text/HighlightWrapper.h"
#include "Support/text/Index.h"
#include "Support/text/IndexingWrapper.h"
#include "Support/text/Input.h"
#include "Support/text/LangPack.h"
#include "Support/text/LangPackReader.h"
#include "Support/text/Notification.h"
#include "Support/text/Output.h"
#include "Support/text/ParseFile.h"
#include "Support/text/Section.h"
#include "Support/text/THWrapper.h"
#include "Support/text/Word.h"
