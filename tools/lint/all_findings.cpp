#include "tools/lint/all_findings.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "tools/findings/library_findings.h"
#include "tools/findings/xml_findings.h"
#include "tools/lint/lint.h"

AllFindings all_findings(const Description& description, Sources& sources, std::int32_t effort) {
    std::vector<Finding> findings = library_findings(description, sources);
    append_xml_findings(findings, description, sources);
    append_lint_findings(findings, description, sources);
    Sense sense = sense_findings(description, sources, effort, findings);
    std::move(sense.findings.begin(), sense.findings.end(), std::back_inserter(findings));
    return {std::move(findings), sense.undecided};
}
