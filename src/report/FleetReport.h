// What a report on many tills holds: each till with its setup, how that deviates from a standard, and what
// was last done with its device. What many tills have in common is kept once. How it looks stands in
// ReportPage.
#pragma once

#include <compare>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "report/OnceEach.h"
#include "report/ResultFile.h"
#include "setup/SetupDocument.h"

namespace kelvora {

/// A module of a setup with what rides on it. Texts are English and UTF-8.
struct ReportModule {
    std::string title;
    std::vector<std::string> facts;  ///< its key numbers and options
    std::string keyMap{};            ///< one of KeyType a grid position; empty without keys
    int columns = 0;
    int firstKeyNumber = 0;

    friend auto operator<=>(const ReportModule&, const ReportModule&) = default;
};

struct ReportSetup {
    std::string names;    ///< of its modules: "KM096, MCR"
    std::string options;  ///< "fiscal keyboard: yes; ..."
    std::vector<std::size_t> modules;
    std::size_t picture = 0;

    friend auto operator<=>(const ReportSetup&, const ReportSetup&) = default;
};

/// What is found out about one file, by itself; the tills may be looked at on many threads.
struct TillFacts {
    std::string name;  ///< UTF-8, as are the others
    std::string file;
    std::string why{};      ///< it could not be read; empty for a setup
    std::string options{};  ///< as in ReportSetup
    std::optional<SetupDocument> document{};
    std::vector<ReportModule> modules{};
    std::vector<std::string> deviations{};  ///< from the standard, a line each
};

/// Of a setup. `standard` may be null.
TillFacts FactsOf(std::string name, std::string file, SetupDocument document, const SetupDocument* standard);

struct ReportTill {
    std::string name;
    std::string file;
    std::string why;                     ///< there is no setup to show; empty where there is
    std::optional<std::size_t> setup{};  ///< which of the setups
    std::size_t deviations = 0;          ///< which of the lists
    std::optional<TillResult> result{};  ///< the last one
};

struct ReportCounts {
    std::size_t tills = 0, deviating = 0, failed = 0, unread = 0;
};

/// Lines of pictures that follow each other among all lines: the first one and how many.
using PicturePart = std::pair<std::size_t, std::size_t>;

class FleetReport {
public:
    void Add(TillFacts facts);

    /// Gives each till the latest of its results, known by the name of its file in letters of any case (A to
    /// Z alone). Where a result names one of the files as its setup, the till's row shows that one, and the
    /// file has no other row unless a till of its name has a result too. A result whose till has no setup
    /// by either way, or several of its name, gets a row of its own. After all Add.
    void AddResults(const std::vector<TillResult>& results);

    ReportCounts Counts() const;
    const std::vector<ReportTill>& Tills() const { return tills_; }
    const std::vector<ReportSetup>& Setups() const { return setups_.Values(); }
    const std::vector<ReportModule>& Modules() const { return modules_.Values(); }

    /// What is to be drawn once all tills are added: the modules of each picture, which StripPicture may draw
    /// on many threads.
    const std::vector<ModuleList>& ToDraw() const { return toDraw_; }

    /// Takes the SVG document of the next one of them. Pictures differ in few lines: each line is kept once.
    void AddPicture(const std::string& svg);

    const std::vector<std::string>& PictureLines() const { return lines_.Values(); }
    const std::vector<std::vector<PicturePart>>& Pictures() const { return pictures_; }

    const std::vector<std::string>& Deviations() const { return deviations_.Values(); }
    /// Lists of places among Deviations; the first one is empty.
    const std::vector<std::vector<std::size_t>>& DeviationLists() const { return lists_.Values(); }

private:
    std::size_t PictureOf(const ModuleList& modules);
    std::size_t SetupOf(const TillFacts& facts);
    std::size_t ListOf(const std::vector<std::string>& deviations);

    std::map<std::string, std::size_t> looks_;  // places among what is to be drawn, by what is seen of it
    std::vector<ModuleList> toDraw_;
    OnceEach<std::string, std::unordered_map<std::string, std::size_t>> lines_;
    std::vector<std::vector<PicturePart>> pictures_;
    OnceEach<ReportModule> modules_;
    OnceEach<ReportSetup> setups_;
    OnceEach<std::string> deviations_;
    OnceEach<std::vector<std::size_t>> lists_;
    std::vector<ReportTill> tills_;
};

}  // namespace kelvora
