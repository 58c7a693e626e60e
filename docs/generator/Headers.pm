package Headers;
# Reads a public header as the manual that it is. docs/header-comments.md tells the layout.
#
#   header    { path, title, intro, sections, functions }
#   section   { title, intro, items }              the first has no title when nothing stands above
#   item      { kind, doc, ... }                   block, macro, type or data
#   block     { doc, functions => [{ name, result, arguments, text }], entries }
#   doc       list of paragraphs { kind, text | rows | lines }: prose, result, rows, table, code

use strict;
use warnings;

sub parse {
  my ($path, $root) = @_;
  my $shown = $path =~ m{include/(.*)$} ? $1 : $path;
  my $header = { path => $shown, title => '', intro => [], sections => [], functions => {} };
  my $section = { title => '', intro => [], items => [] };
  push @{ $header->{sections} }, $section;
  my $doc = [];    # the comment that the next item belongs to
  my $block;
  for my $token (tokens($path)) {
    my ($kind, $text) = @$token;
    if ($kind eq 'blank') { $doc = []; next }
    if ($kind eq 'comment') {
      undef $block;
      my @lines = @$text;
      if ($lines[0] =~ /^-{20,}$/) {
        $section = { title => $lines[1], intro => [], items => [] };
        push @{ $header->{sections} }, $section;
        $doc = $section->{intro} = [paragraphs(@lines[3 .. $#lines])];
      } elsif (@lines > 1 && $lines[1] =~ /^={3,}$/) {
        $header->{title} = $lines[0];
        $doc = $header->{intro} = [paragraphs(@lines[2 .. $#lines])];
      } else {
        $doc = [paragraphs(@lines)];
      }
    } elsif ($kind eq 'function') {
      if (!$block || @$doc && $doc != $block->{doc}) {
        # A section's opening comment may end with the comment of its first operation.
        my $own = $doc;
        if ($doc == $section->{intro}) {
          my $at = 0;
          $at++ while $at < @$doc && !is_entry($doc->[$at], $text->{name});
          $own = [splice @$doc, $at];
        }
        $doc = $own;
        $block = { kind => 'block', doc => $own, functions => [] };
        push @{ $section->{items} }, $block;
      }
      push @{ $block->{functions} }, $text;
      $header->{functions}{ $text->{name} } = $block;
    } else {
      undef $block;
      push @{ $section->{items} }, { kind => $kind, doc => $doc, %$text };
    }
  }
  for my $part (@{ $header->{sections} }) {
    $_->{kind} eq 'block' and entries($_) for @{ $part->{items} };
  }
  describe($header);
  for my $doc ($header->{intro}, map { ($_->{intro}, map { $_->{doc} } @{ $_->{items} }) } @{ $header->{sections} }) {
    $_->{path} = $header->{path} for grep { $_->{kind} eq 'code' } @$doc;
  }
  shift @{ $header->{sections} }
    if @{ $header->{sections} } > 1 && !@{ $header->{sections}[0]{items} };
  return $header;
}

# Comments as lists of lines without their frame, declarations as records, and blank lines.
sub tokens {
  my ($path) = @_;
  open my $in, '<', $path or die "$path: $!\n";
  my @lines = map { chomp; $_ } <$in>;
  my @tokens;
  while (defined(my $line = shift @lines)) {
    if ($line =~ /^\s*$/) { push @tokens, ['blank'] }
    elsif ($line =~ m{^/\*}) {
      my $all = $line;
      $all .= "\n" . shift @lines until $all =~ m{\*/};
      $all =~ s{^/\*\s?|\s*\*/\s*$}{}g;
      my @inner = map { s/^ \* ?//r } split /\n/, $all;
      shift @inner while @inner && $inner[0] =~ /^\s*$/;
      pop @inner   while @inner && $inner[-1] =~ /^\s*$/;
      push @tokens, ['comment', \@inner] if @inner;
    } elsif ($line =~ /^#define\s+(\w+)(\([^)]*\))?\s*(.*)$/) {
      my ($name, $arguments, $body) = ($1, $2 // '', $3);
      $body =~ s/\s*\\$/' ' . (shift(@lines) =~ s{^\s+}{}r)/e while $body =~ /\\$/;
      next if $name =~ /_H$/;
      my $note = $body =~ s{\s*/\*\s*(.*?)\s*\*/}{}s ? $1 : '';
      push @tokens, ['macro', { name => $name, arguments => $arguments, body => $body,
                                note => $note }];
    } elsif ($line =~ /^(?:#|extern "C"|\}$)/) { next }
    elsif ($line =~ /^typedef\b/) {
      my $all = $line;
      $all .= "\n" . shift @lines until $all =~ /\{/ ? $all =~ /^\}[^;]*;/m : $all =~ /;/;
      my ($name) = $all =~ /\(\s*\*\s*(\w+)\)|(\w+)\s*;\s*$/ ? $1 // $2 : '';
      push @tokens, ['type', { name => $name, text => $all }];
    } elsif ($line =~ /^CAMPOTIPO_API\b/) {
      my $all = $line;
      $all .= ' ' . (shift(@lines) =~ s/^\s+//r) until $all =~ /;\s*$/;
      push @tokens, $all =~ /^CAMPOTIPO_API extern/ ? ['data', data($all)] : ['function', declaration($all)];
    } else { die "$path: not understood: $line\n" }
  }
  return @tokens;
}

sub data {
  my $text = shift =~ s/^CAMPOTIPO_API //r;
  my ($name) = $text =~ /(\w+)\s*(?:\[[^\]]*\])?;/;
  return { name => $name, text => $text };
}

sub declaration {
  my ($text) = @_;
  $text =~ s/^CAMPOTIPO_API //;
  $text =~ s/\s*CAMPOTIPO_NOEXCEPT//;
  $text =~ s/\s*__attribute__\(\(.*\)\)//;
  my ($result, $name, $list) = $text =~ /^(.*?)(\w+)\((.*)\);$/s or die "unreadable: $text\n";
  my @arguments = grep { $_ ne 'void' } split /,\s*/, $list;
  my @names = map { /(\w+)(?:\[[^\]]*\])?$/ ? $1 : $_ } @arguments;
  return { name => $name, result => $result =~ s/\s+$//r, text => $text, arguments => \@names };
}

sub paragraphs {
  my @lines = @_;
  my (@all, @some);
  for my $line (@lines, '') {
    if ($line =~ /\S/) { push @some, $line; next }
    push @all, paragraph(@some) if @some;
    @some = ();
  }
  # A code sample may hold blank lines, and so may a table.
  my @joined;
  for my $next (@all) {
    if (@joined && $next->{kind} eq 'code' && $joined[-1]{kind} eq 'code') {
      push @{ $joined[-1]{lines} }, '', @{ $next->{lines} };
    } else { push @joined, $next }
  }
  return @joined;
}

my $names = qr/\*?[A-Za-z_]\w*(?:, \*?[A-Za-z_]\w*)*/;

# One paragraph, or several where prose ends with "Result: ..." or with indented lines.
sub paragraph {
  my @lines = @_;
  if ($lines[0] =~ /^ {4}/ && join("\n", @lines) =~ /;/) {
    return { kind => 'code', lines => [map { s/^ {4}//r } @lines] };
  }
  if ($lines[0] =~ /^ {2}/) {
    return { kind => 'table', lines => [map { s/^ {2}//r } @lines] };
  }
  if ($lines[0] =~ /^$names {2,}\S/ || @lines > 1 && $lines[0] =~ /^$names$/ && $lines[1] =~ /^ {3}/) {
    my @rows;
    for my $line (@lines) {
      if ($line =~ /^($names)(?: {2,}(\S.*))?$/) {
        push @rows, { names => [map { s/^\*//r } split /, /, $1], text => $2 // '' };
      } elsif ($line =~ /^\s+(.*)$/) {
        $rows[-1]{text} .= ($rows[-1]{text} eq '' ? '' : ' ') . $1;
      } else { return prose(@lines) }
    }
    return { kind => 'rows', rows => \@rows };
  }
  return prose(@lines);
}

sub prose {
  my @lines = @_;
  my ($at) = grep { $lines[$_] =~ /^ {2}/ } 0 .. $#lines;
  if ($at) { return (prose(@lines[0 .. $at - 1]), paragraph(@lines[$at .. $#lines])) }
  my $text = join ' ', @lines;
  if ($text =~ /^(.*?)\s*(?<![\w-])(Result(?: of [^:.]*)?: .*)$/) {
    my @before = $1 eq '' ? () : { kind => 'prose', text => $1 };
    return (@before, { kind => 'result', text => $2 });
  }
  return { kind => 'prose', text => $text };
}

# Whether a paragraph begins with the name of one of the functions.
sub is_entry {
  my ($paragraph, @functions) = @_;
  return 0 unless $paragraph->{kind} eq 'prose' && $paragraph->{text} =~ /^($names): /;
  for my $said (split /, /, $1) {
    return 1 if grep { means($said, $_) || /_\Q$said\E_/ } @functions;
  }
  return 0;
}

# Whether a name as the comments write it means a function: in full, without its family, or with a
# letter for the number of the member.
sub means {
  my ($said, $function) = @_;
  return 1 if $said eq $function || $function =~ /_\Q$said\E$/;
  while ($said =~ /(?=(NN|nn|[NnX]))/g) {
    for my $length (1 .. length $1) {
      my ($before, $after) = (substr($said, 0, pos $said), substr($said, pos($said) + $length));
      return 1 if $function =~ /^(?:\w+_)?\Q$before\E\d+\Q$after\E$/;
    }
  }
  return 0;
}

# What a block says of each of its functions by name: "a, b: text" where a sentence begins, or a row.
sub entries {
  my ($block) = @_;
  my @functions = map { $_->{name} } @{ $block->{functions} };
  my %arguments = map { $_ => 1 } map { @{ $_->{arguments} } } @{ $block->{functions} };
  for my $paragraph (@{ $block->{doc} }) {
    if ($paragraph->{kind} eq 'rows') {
      my @said = map { @{ $_->{names} } } @{ $paragraph->{rows} };
      next if grep { $arguments{$_} } @said;
      next unless grep { my $said = $_; grep { means($said, $_) } @functions } @said;
      $paragraph->{kind} = 'operations';
      for my $row (@{ $paragraph->{rows} }) { entry($block, $row->{names}, $row->{text}) }
    } elsif ($paragraph->{kind} eq 'prose') {
      my @parts = split /(?:^|(?<=[.;] ))($names): /, $paragraph->{text};
      shift @parts;
      while (my ($said, $text) = splice @parts, 0, 2) {
        entry($block, [split /, /, $said], $text);
      }
    }
  }
}

# A name may also be the middle of those that it stands for, where none is it: "edita" of X_edita_Y.
sub entry {
  my ($block, $said, $text) = @_;
  $text =~ s/\s+$//;
  my @functions = map { $_->{name} } @{ $block->{functions} };
  for my $name (@$said) {
    next if grep { means($name, $_) } @functions;
    for my $function (grep { /_\Q$name\E_/ } @functions) {
      $block->{entries}{$function} //= $text;
    }
  }
  my @known = grep { my $name = $_; grep { means($name, $_) || /_\Q$name\E_/ } @functions } @$said;
  return unless @known;
  my @names = grep { defined } $block->{named}, @known;
  $block->{named} = join ', ', @names;
  for my $function (@functions) {
    next unless grep { means($_, $function) } @$said;
    $block->{entries}{$function} //= $text;
  }
}

# Gives every function its brief text, its result and the text of each argument: from the rows of
# its own block, of the block that it is "like", of its section and of its header, in this order.
sub describe {
  my ($header) = @_;
  for my $section (@{ $header->{sections} }) {
    for my $block (grep { $_->{kind} eq 'block' } @{ $section->{items} }) {
      my ($first) = grep { $_->{kind} eq 'prose' } @{ $block->{doc} };
      for my $function (@{ $block->{functions} }) {
        my $entry = $block->{entries}{ $function->{name} };
        $function->{brief} = sentence($entry // ($first ? $first->{text} : ''));
        $function->{returns} = returns($section, $block, $function, $entry);
        for my $name (@{ $function->{arguments} }) {
          $function->{about}{$name} = about($header, $section, $block, $name);
        }
      }
    }
  }
}

sub sentence {
  my ($text) = @_;
  return $text =~ /^(.*?\.)(?: [A-Z_].*)?$/s ? $1 : $text;
}

sub returns {
  my ($section, $block, $function, $entry) = @_;
  return '' if $function->{result} eq 'void';
  my @told;
  for my $doc ($block->{doc}, $section->{intro}) {
    @told = map { $_->{text} =~ s/^Result(?: of [^:.]*)?: //r } grep { $_->{kind} eq 'result' } @$doc;
    last if @told;
  }
  my $text = @told ? join ' ', @told : sentence($entry // '');
  my ($word) = $text =~ /^(\w+)/;
  return $word && grep({ $_ eq $word } @{ $function->{arguments} }) ? $text : ucfirst $text;
}

sub about {
  my ($header, $section, $block, $name) = @_;
  my @docs = ($block->{doc});
  for my $text (map { $_->{text} // () } @{ $block->{doc} }) {
    while ($text =~ /\b(?:[Ll]ike|the same as|as in|as) (\w+)/g) {
      my $said = $1;
      my ($other) = sort { length $a <=> length $b || $a cmp $b }
        grep { means($said, $_) } keys %{ $header->{functions} };
      push @docs, $header->{functions}{$other}{doc} if $other;
    }
  }
  for my $doc (@docs, $section->{intro}, $header->{intro}) {
    for my $row (map { @{ $_->{rows} } } grep { $_->{kind} eq 'rows' } @$doc) {
      return $row->{text} if grep { $_ eq $name } @{ $row->{names} };
    }
  }
  return '';
}

# The cells of an aligned table: a column begins where the first line begins a cell. A line without
# a first cell goes on the one before it. Nothing when the lines do not keep to the columns.
sub cells {
  my @lines = @_;
  my @starts;
  push @starts, $-[1] while $lines[0] =~ /(?:^|  )(?=\S)()/g;
  return if @starts < 2;
  my @rows;
  for my $line (@lines) {
    my @cells;
    for my $i (0 .. $#starts) {
      my $from = $starts[$i];
      my $length = $i < $#starts ? $starts[$i + 1] - $from : length $line;
      return if $from > 0 && $from < length $line && substr($line, $from - 1, 1) ne ' ';
      my $cell = $from < length $line ? substr($line, $from, $length) : '';
      push @cells, $cell =~ s/^\s+|\s+$//gr;
    }
    if ($cells[0] eq '' && @rows) {
      for my $i (0 .. $#cells) {
        next if $cells[$i] eq '';
        $rows[-1][$i] .= ($rows[-1][$i] eq '' ? '' : ' ') . $cells[$i];
      }
    } else { push @rows, \@cells }
  }
  return \@rows;
}

# The manual page of a function. A family of its own is the name up to the first "_", less digits.
my @families = (
  [qr/^(?:_ato|_\d|BIN\d_)/ => 'campotipo_numbers', 'binary numbers of 1 to 8 bytes'],
  [qr/^(?:_QUANTIA|PARCELA)_/ => 'QUANTIA', 'money values'],
  [qr/^(?:ZALGORITM|DIGVERIF)_/ => 'ZALGORITM', 'check digits, CPF and CNPJ, unique numbers'],
  [qr/^LETR\w*BIN_/ => 'LETRABIN', 'letters as small numbers'],
  [qr/^CODALFA_/ => 'CODALFA', 'packed codes of any size'],
  [qr/^CODALF\d+_/ => 'CODALF', 'packed codes of 5 to 40 characters'],
  [qr/^CODALFNN_/ => 'CODALFNN', 'packed codes that own their memory'],
  [qr/^CODSTR\d*_/ => 'CODSTR', 'fixed strings'],
  [qr/^BSTR\d+_/ => 'BSTR', 'digit strings that keep their leading zeros'],
  [qr/^BINQ\d+_/ => 'BINQ', 'decimal quantities of 9 to 21 bytes'],
  [qr/^ZBINARIO_/ => 'ZBINARIO', 'numeric fields of any width'],
  [qr/^ARRED_/ => 'ARRED', 'rounding of money values'],
  [qr/^PORC\d_/ => 'PORC', 'percents with 0, 1, 2 or 4 decimals'],
  [qr/^DATAC_/ => 'DATAC', 'dates in three bytes'],
  [qr/^HORAC_/ => 'HORAC', 'times of day in two bytes'],
  [qr/^HHMMSS_/ => 'HHMMSS', 'times of day in three bytes'],
  [qr/^TABBOOL_/ => 'TABBOOL', 'tables of bits'],
  [qr/^ZBTFIELD_/ => 'ZBTFIELD', 'fields of any number of bits'],
  [qr/^ZGUID_/ => 'ZGUID', 'GUIDs and their texts'],
  [qr/^URLENCOD_/ => 'URLENCOD', 'percent encoding of URLs'],
  [qr/^DOCUMENTO_/ => 'DOCUMENTO', 'numbers of Brazilian documents'],
  [qr/^CRONOBASE_/ => 'CRONOBASE', 'calendar services'],
  [qr/^LINHAFLEX_/ => 'LINHAFLEX', 'growable text'],
);
sub family {
  my ($name) = @_;
  for my $family (@families) { return @$family[1, 2] if $name =~ $family->[0] }
  die "$name belongs to no family: add one to docs/generator/Headers.pm\n";
}

# What a macro is that the header says nothing of: its name ends in the kind of size it tells.
my %sizes = (
  BYTES => 'Bytes of a field', TEXT_SIZE => 'Bytes of a text, its NUL counted',
  DIGITS => 'Digits that always fit', CHARACTERS => 'Positions of a field',
);
sub size {
  my ($name) = @_;
  for my $ending (keys %sizes) {
    return "$sizes{$ending}: " . ($name =~ s/_?$ending$//r) . '.' if $name =~ /_$ending$/;
  }
  return '';
}

# A sample as a program that compiles as it stands, with what is beside a statement as a comment.
sub program {
  my ($sample, $before, $after) = @_;
  my @lines = @{ $sample->{lines} };
  my $header = $sample->{path} =~ m{^campotipo/} ? 'campotipo/campotipo.h' : $sample->{path};
  for (@lines) {
    next if s/^( {16,})(\S.*)$/$1$before$2$after/;
    s/^(.*[;{}])( {2,})(\S.*)$/$1$2$before$3$after/;
  }
  return ("#include <$header>", grep({ /\b(?:printf|puts)\(/ } @lines) ? '#include <stdio.h>' : (), '',
    'int main(void) {', map({ $_ eq '' ? '' : "  $_" } @lines), '  return 0;', '}');
}

# Every public name of the headers beside a header and of those that are told of with it.
sub names {
  my ($path) = @_;
  my ($root) = $path =~ m{^(.*?)(?:library/)?(?:support/)?include/} or return;
  my %names;
  for my $file (public_headers($root eq '' ? '.' : $root)) {
    open my $in, '<', $file or die "$file: $!\n";
    my $text = do { local $/; <$in> };
    $text =~ s{/\*.*?\*/}{}gs;
    $names{$1} = 1 while $text =~ /^#define (\w+)/mg;
    $names{$1} = 1 while $text =~ /CAMPOTIPO_API\s[^;(]*?(\w+)\s*(?:\(|\[|;)/g;
    $names{$1} = 1 while $text =~ /^typedef struct (\w+)/mg;
  }
  delete @names{ grep { /_H$|^CAMPOTIPO_/ } keys %names };
  return sort keys %names;
}

sub public_headers {
  my ($root) = @_;
  return grep { !m{/(?:campotipo|export|version)\.h$} }
    (sort(glob "$root/library/include/campotipo/*.h"), sort(glob "$root/library/support/include/campotipo-support/*.h"));
}

1;
