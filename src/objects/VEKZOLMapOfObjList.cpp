// File: VEKZOLMapOfObjList.cpp
// The host's objects grouped under text keys.
#include <vekzol/objects/VEKZOLMapOfObjList.h>

#include <utility>

#include <vekzol/platform/Status.h>

VEKZOLMapOfObjList::VEKZOLMapOfObjList() = default;

// Copies keys and lists; the object pointers in them are shared.
VEKZOLMapOfObjList::VEKZOLMapOfObjList(const VEKZOLMapOfObjList& other) = default;

VEKZOLMapOfObjList& VEKZOLMapOfObjList::operator=(const VEKZOLMapOfObjList& other) = default;

VEKZOLMapOfObjList::~VEKZOLMapOfObjList() = default;

long VEKZOLMapOfObjList::Add(CString key, VEKIZOLObject* object) {
  m_Lists[std::move(key)].push_back(object);
  return S_OK;
}

long VEKZOLMapOfObjList::Add(CString key, std::deque<VEKIZOLObject*>& objects) {
  // The new list is built aside and then stored: `objects` may be the very
  // list being extended (a host that passes `begin()->second`), and a failed
  // allocation leaves the map as it was.
  auto found = m_Lists.find(key);
  std::deque<VEKIZOLObject*> list;
  if (found != m_Lists.end()) {
    list = found->second;
  }
  list.insert(list.end(), objects.begin(), objects.end());
  if (found != m_Lists.end()) {
    found->second.swap(list);
  } else {
    m_Lists.emplace(std::move(key), std::move(list));
  }
  return S_OK;
}

long VEKZOLMapOfObjList::Get(CString key, std::deque<VEKIZOLObject*>& objects) {
  auto found = m_Lists.find(key);
  if (found == m_Lists.end()) {
    return E_FAIL;
  }
  // Copy first, then swap: the caller's deque is either wholly replaced or
  // untouched, and passing the stored list itself is harmless.
  std::deque<VEKIZOLObject*> copy(found->second);
  objects.swap(copy);
  return S_OK;
}

VEKZOLMapOfObjList::ListMap::iterator VEKZOLMapOfObjList::begin() { return m_Lists.begin(); }

VEKZOLMapOfObjList::ListMap::iterator VEKZOLMapOfObjList::end() { return m_Lists.end(); }

long VEKZOLMapOfObjList::clear() {
  m_Lists.clear();
  return S_OK;
}
