#!/usr/bin/env perl
# Each C sample of a page stands word for word in one of the examples, which the tests compile and
# run. The pages show the same blocks and count the functions of each header as the lists of exports do;
# how to link is the same on the first page of the reference, and its documents are the header's.
# usage: check_readme.pl SOURCE PAGE...
use strict;
use warnings;
use File::Find;

my ($root, @pages) = @ARGV;
sub slurp { open my $in, '<', $_[0] or die "$_[0]: $!\n"; local $/; return scalar <$in> }
my $faults = 0;
sub fault { print "FAULT: @_\n"; $faults++ }

my @sources;
find(sub { push @sources, slurp($_) if /\.c$/ }, "$root/examples");
my %counted;    # header => functions
my %exported = map { $_ => 1 } map { split /\n/, slurp($_) } glob "$root/tests/abi/exports*.txt";
for my $header (glob "$root/library/include/campotipo/*.h") {
  my %declared = map { $_ => 1 } slurp($header) =~ /^CAMPOTIPO_API [^;(]*?(\w+)\(/mg;
  my $count = grep { $exported{$_} } keys %declared;
  $counted{$header =~ s{.*/}{}r} = $count if $count;
}
sub linking { return join '', $_[0] =~ /^(    (?:find_package|target_link|cc app).*\n)/mg }
my $linking = linking(slurp("$root/docs/index.md"));
my $table = slurp("$root/docs/fields/documents.md");
my ($documents) = slurp("$root/library/include/campotipo/documents.h") =~ /characters  with.*\n((?: \*   .*\n)+)/;
for my $row ($documents =~ /^ \*   (.*)$/mg) {
  my ($name, $characters, $punctuation) = split / {2,}/, $row;
  fault("docs/fields/documents.md: no row \"$row\"")
    unless $table =~ /^\| \Q$name\E \| [^|]+ \| \Q$characters\E \| \Q$punctuation\E \|$/m;
}
my ($count, $first) = (0);
for my $page (@pages) {
  my $text = slurp($page);
  fault("$page: links otherwise than docs/index.md") if $linking ne linking($text);
  my @blocks = $text =~ /^(```.*?^```)$/msg;
  for my $sample (map { /^```c\n(.*)```$/s ? $1 : () } @blocks) {
    $count++;
    next if grep { index($_, $sample) >= 0 } @sources;
    fault("$page: no example holds this sample:\n$sample");
  }
  $first //= \@blocks;
  fault("$page: its blocks of code are not those of $pages[0]") if "@$first" ne "@blocks";
  my %told;
  $told{$1} += $2 while $text =~ /^\| .* \| `(\w+\.h)` \| (\d+) \|$/mg;
  for my $header (sort keys %{ { %told, %counted } }) {
    my ($said, $is) = map { $_->{$header} // 0 } \%told, \%counted;
    fault("$page: $header has $is functions, and the table tells $said") if $said != $is;
  }
}
print "$count samples, $faults faults\n";
exit($faults > 0);
