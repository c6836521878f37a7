#pragma once

/// Declares the copy-on-write templates that the interfaces of the foundation name. Their
/// definitions belong to the clients of the foundation.
template <class T, class Policy>
class cow_COW;
template <class T>
class cow_Direct;
template <class T>
class cow_List;
template <class K, class V>
class cow_Map;
