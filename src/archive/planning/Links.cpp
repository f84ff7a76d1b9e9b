// SPDX-License-Identifier: MIT
// Follows every link inside of the planned tree.
#include "archive/planning/Links.h"

namespace archive {
namespace {

class Resolver {
 public:
  Resolver(const Tree& tree, const std::vector<Link>& links, std::set<NodeId>& named)
      : fTree(tree), fLinks(links), fNamed(named), fKnown(links.size()) {
    fIndex.reserve(links.size());
    for (std::size_t i = 0; i < links.size(); ++i) fIndex[links[i].node] = i;
  }

  /// Each link is resolved once; `depth` is the number of links that are being followed.
  Status Resolve(std::size_t link, unsigned depth) {
    Known& known = fKnown[link];
    if (known.done) return {};
    if (depth > kMostHops) return Refuse(link, "leads through too many other links");
    const std::string_view target = fLinks[link].target;
    if (target.empty() || target.size() > kLongestTarget || target.find('\0') != std::string_view::npos)
      return Refuse(link, "has no usable target");
    if (target.front() == '/') return Refuse(link, "leads outside");

    NodeId at = fTree[fLinks[link].node].parent;
    unsigned hops = 1;
    for (std::string_view rest = target; !rest.empty();) {
      const std::string_view name = rest.substr(0, rest.find('/'));
      rest.remove_prefix(std::min(name.size() + 1, rest.size()));
      if (name.empty() || name == ".") continue;
      if (name == "..") {
        if (at == kRoot) return Refuse(link, "leads outside");
        if (at == kNoNode) return Refuse(link, "leads to nobody knows where");
        at = fTree[at].parent;
        continue;
      }
      Status status = Step(link, name, depth, at, hops);
      if (!status.Ok()) return status;
    }
    known = {true, at, hops};
    return {};
  }

 private:
  static constexpr unsigned kMostHops = 40;  // the kernel follows no more either

  struct Known {
    bool done = false;
    NodeId leadsTo = kNoNode;
    unsigned hops = 0;
  };

  Status Refuse(std::size_t link, std::string_view what) const {
    return Fail("the link ", Quoted(fTree.Path(fLinks[link].node)), " ", what);
  }

  /// One name further from `at`, which becomes kNoNode where the archive holds nothing.
  Status Step(std::size_t link, std::string_view name, unsigned depth, NodeId& at, unsigned& hops) {
    if (at == kNoNode) return {};
    const bool isTop = at == kRoot;
    at = fTree[at].kind == Kind::Folder ? fTree.Find(at, name) : kNoNode;
    if (isTop && at != kNoNode) fNamed.insert(at);
    if (at == kNoNode || fTree[at].kind != Kind::Link) return {};
    const std::size_t other = fIndex.at(at);
    Status status = Resolve(other, depth + 1);
    if (!status.Ok()) return status;
    hops += fKnown[other].hops;
    if (hops > kMostHops) return Refuse(link, "leads through too many other links");
    at = fKnown[other].leadsTo;
    return {};
  }

  const Tree& fTree;
  const std::vector<Link>& fLinks;
  std::set<NodeId>& fNamed;
  std::vector<Known> fKnown;
  std::unordered_map<NodeId, std::size_t> fIndex;
};

}  // namespace

Status CheckLinks(const Tree& tree, const std::vector<Link>& links, std::set<NodeId>& named) {
  Resolver resolver(tree, links, named);
  for (std::size_t i = 0; i < links.size(); ++i) {
    Status status = resolver.Resolve(i, 1);
    if (!status.Ok()) return status;
  }
  return {};
}

}  // namespace archive
