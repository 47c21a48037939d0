// Writes the pages of the help and the project that qhelpgenerator packs: help_pages <help folder>
// <output folder>.
#include "core/analysis.h"
#include "core/analysis_file.h"
#include "core/catalogue.h"
#include "generator/site.h"
#include "support/scripted_platform.h"

#include <cstdio>
#include <exception>

int main(int argc, char** argv) {
    using namespace quorvanta;
    if (argc != 3) {
        std::fprintf(stderr, "usage: help_pages <help folder> <output folder>\n");
        return 2;
    }
    try {
        ScriptedPlatform platform;
        Main();
        FileCommand(CalculationWindow);
        const help::Site site = help::BuildSite(argv[1]);
        const auto broken = help::BrokenLinks(site);
        for (const std::string& link : broken)
            std::fprintf(stderr, "broken link in %s\n", link.c_str());
        help::WriteSite(site, argv[2]);
        return broken.empty() ? 0 : 1;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "%s\n", problem.what());
        return 1;
    }
}
