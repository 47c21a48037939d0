// The pages about parameters, made from their texts and from the engine's lists.
#pragma once

#include "generator/parameterlists.h"
#include "generator/site.h"
#include "generator/topic.h"

namespace quorvanta::help {

// One page for every choice of samples and tails of an analysis that is served: each parameter
// with its text, its range and the options that it appears with. Those that the description textsOf
// has of its own hold for it as well; 0: there is none.
std::vector<Page> ParameterPages(const HelpSubject& analysis, const ParameterTexts& texts,
                                 i32 textsOf);

// All parameters by label: HTML, and the index words of its places.
std::string AllParametersHtml(const ParameterTexts& texts, std::vector<Keyword>& keywords);

} // namespace quorvanta::help
