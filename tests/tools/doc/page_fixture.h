#pragma once

#include <gtest/gtest.h>

#include <pugixml.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/temporary_folder.h"
#include "tools/description/description.h"
#include "tools/doc/page.h"
#include "tools/findings/library_findings.h"
#include "tools/lint/lint.h"

// Pages of descriptions, parsed as the XML that they are.
class PageTest : public testing::Test {
protected:
    // The page of the file with these settings, or without any, which "document" is then parsed
    // from.
    void make(const std::string& path, const std::vector<KIVO_ASSIGNMENT>& settings = {}) {
        Description description(path);
        ASSERT_FALSE(description.failure()) << path << ": " << *description.failure();
        KIVO_SESSION session(description.info());
        ASSERT_EQ(session.set_all(settings), KIVO_SET_RESULT::kDone);
        Sources sources;
        std::vector<Finding> findings = library_findings(description, sources);
        for (Finding& finding : stimulus_findings(description, sources)) {
            findings.push_back(std::move(finding));
        }
        page = make_page(description.info(), path, findings, settings.empty() ? nullptr : &session);
        const pugi::xml_parse_result result = document.load_buffer(
            page.data(), page.size(), pugi::parse_default | pugi::parse_ws_pcdata);
        ASSERT_TRUE(result) << result.description() << " in:\n"
                            << page.substr(static_cast<std::size_t>(result.offset), 200);
    }

    // The page of a description with these sections.
    void make_from(const std::string& sections) {
        make(folder_.write("sample_info.xml", "<ROOT>" + sections + "</ROOT>"));
    }

    pugi::xml_node section(const char* id) const {
        return document.select_node(("//section[@id='" + std::string(id) + "']").c_str()).node();
    }

    // All text below a node, with single blanks where there is white space.
    static std::string text_of(const pugi::xml_node& node) {
        std::string text;
        for (const pugi::xpath_node& found : node.select_nodes(".//text()")) {
            text += found.node().value();
        }
        std::istringstream words(text);
        std::string joined;
        for (std::string word; words >> word;) {
            joined += (joined.empty() ? "" : " ") + word;
        }
        return joined;
    }

    // The cells of the table rows below a node, headings first.
    static std::vector<std::vector<std::string>> rows_of(const pugi::xml_node& node) {
        std::vector<std::vector<std::string>> rows;
        for (const pugi::xpath_node& row : node.select_nodes(".//tr")) {
            rows.emplace_back();
            for (const pugi::xml_node& cell : row.node().children()) {
                if (cell.type() == pugi::node_element) {
                    rows.back().push_back(text_of(cell));
                }
            }
        }
        return rows;
    }

    std::vector<std::string> texts_of(const char* xpath) const {
        std::vector<std::string> texts;
        for (const pugi::xpath_node& found : document.select_nodes(xpath)) {
            texts.push_back(text_of(found.node()));
        }
        return texts;
    }

    std::string page;
    pugi::xml_document document;

private:
    TemporaryFolder folder_;
};

using Texts = std::vector<std::string>;
using Rows = std::vector<Texts>;
