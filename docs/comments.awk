# Shows Doxygen a header as it is read: the first comment is the file's, one
# behind a declaration is of that, and any other is of the type that follows or
# of all that follows up to the next blank line or comment. Lines keep their
# numbers.
function end_group() {
  if (in_group) printf "/**@}*/"
  in_group = 0
}

NR == 1 { comment = " \\file\n" }
/^$|^ *};/ { end_group() }
/NOLINT|IWYU|namespace/ { print; next }

/^ *\/\// {
  end_group()
  sub(/^ *\/\//, "")
  comment = comment $0 "\n"
  next
}

# What a template is of is said in its next line.
comment != "" && /^ *template/ {
  template = template $0 "\n"
  next
}

comment != "" {
  in_group = !/^ *(class|struct|enum|#)/
  sub(/\n$/, " */\n", comment)
  printf "%s/**%s%s", in_group ? "/**@{*/" : "", comment, template
  comment = template = ""
}

/^#pragma once/ { next }
{ sub(/  \/\/ /, "  ///< ") }
{ print }
