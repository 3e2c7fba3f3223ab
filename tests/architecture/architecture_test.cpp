// The folders under src/ depend on each other as in the build, in one direction, and the documentation shows the same
// graph.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "platform/files.h"

namespace bellmark {
namespace {

/// A library or program, and the libraries that it is linked with, in the order of the build.
using Graph = std::map<std::string, std::vector<std::string>>;

const Path source = Path(BELLMARK_SOURCE_FOLDER);

Graph DependenciesOfTheBuild() {
    Graph graph;
    std::ifstream file(BELLMARK_DEPENDENCIES);
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::string from;
        words >> from;
        for (std::string to; words >> to;) graph[from].push_back(to);
        graph[from];
    }
    return graph;
}

/// Everything that can be reached from a library; the library itself only if there is a cycle.
std::set<std::string> Below(const Graph& graph, const std::string& from) {
    std::set<std::string> reached;
    std::vector<std::string> open = graph.at(from);
    while (!open.empty()) {
        const std::string next = open.back();
        open.pop_back();
        if (!reached.insert(next).second) continue;
        const auto& further = graph.at(next);
        open.insert(open.end(), further.begin(), further.end());
    }
    return reached;
}

bool IsProgram(const std::string& name) {
    return name.find('/') != std::string::npos;
}

/// The libraries in lines "setup --> fwd & tables", those with the most dependencies first.
std::string Drawn(const Graph& graph) {
    std::vector<std::string> names;
    for (const auto& [name, depends] : graph) {
        if (!IsProgram(name)) names.push_back(name);
    }
    std::stable_sort(names.begin(), names.end(), [&](const std::string& a, const std::string& b) {
        return Below(graph, a).size() > Below(graph, b).size();
    });
    std::string text;
    for (const std::string& name : names) {
        std::vector<std::string> depends = graph.at(name);
        // The dependencies that a program adds are drawn from its folder.
        const auto program = graph.find(name + "/main.cpp");
        if (program != graph.end()) depends.insert(depends.end(), program->second.begin(), program->second.end());
        std::erase(depends, name);
        if (depends.empty()) continue;
        std::sort(depends.begin(), depends.end());
        text += "    " + name + " --> ";
        for (const std::string& to : depends) text += (&to == &depends.front() ? "" : " & ") + to;
        text += '\n';
    }
    return text;
}

std::string TextOf(const Path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(Architecture, IncludesPointInTheDirectionOfTheGraph) {
    const Graph graph = DependenciesOfTheBuild();
    const std::regex include(R"lit(\s*#\s*include\s+"([a-z_]+)/[^"]*".*)lit");
    int seen = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(source / "src")) {
        const Path inside = entry.path().lexically_relative(source / "src");
        const Path extension = entry.path().extension();
        if (!inside.has_parent_path() || (extension != ".cpp" && extension != ".h")) continue;
        const std::string folder = inside.begin()->generic_string();
        const std::string name = graph.count(inside.generic_string()) > 0 ? inside.generic_string() : folder;
        ASSERT_TRUE(graph.count(name)) << folder << " is no library of the build";
        std::set<std::string> allowed = Below(graph, name);
        allowed.insert(folder);
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            std::smatch found;
            if (!std::regex_match(line, found, include)) continue;
            ++seen;
            EXPECT_TRUE(allowed.count(found[1])) << inside.generic_string() << " may not know " << found[1];
        }
    }
    EXPECT_GT(seen, 100);
}

TEST(Architecture, TheGraphHasNoCircle) {
    const Graph graph = DependenciesOfTheBuild();
    for (const auto& [name, depends] : graph) EXPECT_FALSE(Below(graph, name).count(name)) << name;
}

TEST(Architecture, TheDocumentationShowsTheGraphAndEveryFolder) {
    const Graph graph = DependenciesOfTheBuild();
    const std::string page = TextOf(source / "docs/architecture.md");
    EXPECT_NE(page.find("```mermaid\ngraph TD\n" + Drawn(graph) + "```\n"), std::string::npos)
        << "docs/architecture.md must hold:\n"
        << Drawn(graph);
    for (const auto& [name, depends] : graph) {
        EXPECT_TRUE(IsProgram(name) || page.find("| `" + name + "/` |") != std::string::npos) << name;
    }
}

}  // namespace
}  // namespace bellmark
