// File: VEKZOLMapOfObjList.h
// VEKZOLMapOfObjList: the host's objects grouped under text keys, a map
// from a key to a list of object pointers. Keys are ordered by `_mbscmp`
// (case-sensitive, "A" before "a"); the empty key is a key like any other.
//
// The map owns its keys and lists, never the objects: nothing here deletes
// an object, and a list may hold null pointers and the same pointer several
// times. Copies are member by member, so a copy has lists of its own that
// point to the same objects. Not synchronised.
#ifndef VEKZOL_OBJECTS_VEKZOLMAPOFOBJLIST_H_
#define VEKZOL_OBJECTS_VEKZOLMAPOFOBJLIST_H_

#include <deque>
#include <map>

#include <vekzol/objects/VEKIZOLObject.h>
#include <vekzol/platform/CString.h>
#include <vekzol/platform/Export.h>

class VEKZOL_API VEKZOLMapOfObjList {
 public:
  using ListMap = std::map<CString, std::deque<VEKIZOLObject*>>;

  VEKZOLMapOfObjList();
  VEKZOLMapOfObjList(const VEKZOLMapOfObjList& other);
  VEKZOLMapOfObjList& operator=(const VEKZOLMapOfObjList& other);
  // Releases the keys and lists; the objects are left alone.
  virtual ~VEKZOLMapOfObjList();

  // Appends `object` (null or already listed included) to the list of
  // `key`, making the list if the key is new. S_OK, always.
  long Add(CString key, VEKIZOLObject* object);
  // Appends every entry of `objects`, front to back and unfiltered, to the
  // list of `key`; a new key with an empty deque gets an empty list.
  // `objects` is not changed, and may be the key's own list. S_OK, always.
  long Add(CString key, std::deque<VEKIZOLObject*>& objects);
  // Replaces the content of `objects` by a copy of the list of `key`: S_OK.
  // E_FAIL for a missing key, `objects` untouched. Unlike the graph
  // listings, this does not append.
  long Get(CString key, std::deque<VEKIZOLObject*>& objects);
  // The groups in ascending key order; each entry gives the key (`first`)
  // and its list (`second`).
  ListMap::iterator begin();
  ListMap::iterator end();
  // Removes every key and list; S_OK, always.
  long clear();

 protected:
  ListMap m_Lists;
};

#endif  // VEKZOL_OBJECTS_VEKZOLMAPOFOBJLIST_H_
