#pragma once

#include <utility>

#include "cow/cow_CountedHld.h"

/// Destroys everything below a node that is being destroyed, without recursion and without memory:
/// a chain of 100,000 nodes would overflow the stack of nested destructors.
///
/// `Node` has two links, `Node::LinkOf(node, 0)` and `(node, 1)`, of the handle type `Link`.
template <class Node, class Link>
class cow_Dismantler {
  public:
    static void DestroyBelow(Node& node) noexcept {
        Node* pending = nullptr;
        Push(TakeSole(node, 1), pending);
        Push(TakeSole(node, 0), pending);
        while (pending) {
            Node* const last = pending;
            Link& next = Node::LinkOf(*last, 0);
            pending = ReferentOf(next);
            ReferentOf(next) = nullptr;
            Push(TakeSole(*last, 1), pending);
            delete last;
        }
    }

  private:
    /// Empties the link; the node below when nobody else holds it, else null.
    static Node* TakeSole(Node& node, int side) noexcept {
        Link& link = Node::LinkOf(node, side);
        if (link.count && link.count->References() == 1)
            return std::exchange(ReferentOf(link), nullptr);
        link.DropReference();
        return nullptr;
    }

    /// Puts `node` and the chain of its sole descendants by link 0 on the stack `pending`, which is
    /// threaded through the emptied links 0.
    static void Push(Node* node, Node*& pending) noexcept {
        while (node) {
            Node* const below = TakeSole(*node, 0);
            ReferentOf(Node::LinkOf(*node, 0)) = pending;
            pending = node;
            node = below;
        }
    }

    static Node*& ReferentOf(Link& link) noexcept { return link.referent; }
};
