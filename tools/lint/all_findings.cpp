#include "tools/lint/all_findings.h"

#include "tools/findings/library_findings.h"
#include "tools/findings/xml_findings.h"
#include "tools/lint/lint.h"

std::vector<Finding> all_findings(const Description& description, Sources& sources) {
    std::vector<Finding> findings = library_findings(description, sources);
    append_xml_findings(findings, description, sources);
    append_lint_findings(findings, description, sources);
    return findings;
}
