// proves: friends that say nothing or can't be
class A {
  friend int object; // expect: error bad_friend_decl
  friend void f();
  friend void f(); // expect: warning duplicate_friend_decl
  friend class A; // expect: warning self_friendship
  friend class B;
  friend class B; // expect: warning duplicate_friend_decl
};
