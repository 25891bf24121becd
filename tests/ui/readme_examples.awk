# Makes a function of each C++ example of a Markdown file: readme_example_1() and so on.
/^```cpp$/ { printf "inline void readme_example_%d() {\n", ++count; inside = 1; next }
/^```$/ { if (inside) print "}\n"; inside = 0 }
inside
