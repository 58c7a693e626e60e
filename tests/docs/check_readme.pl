#!/usr/bin/env perl
# Each C sample of a page stands word for word in one of the examples, which the tests compile and run.
# usage: check_readme.pl EXAMPLES PAGE...
use strict;
use warnings;
use File::Find;

my ($folder, @pages) = @ARGV;
sub slurp { open my $in, '<', $_[0] or die "$_[0]: $!\n"; local $/; return scalar <$in> }
my @sources;
find(sub { push @sources, slurp($_) if /\.c$/ }, $folder);
my ($count, $faults) = (0, 0);
for my $page (@pages) {
  my $text = slurp($page);
  while ($text =~ /^```c\n(.*?)^```$/msg) {
    my $sample = $1;
    $count++;
    next if grep { index($_, $sample) >= 0 } @sources;
    print "FAULT: $page: no example holds this sample:\n$sample\n";
    $faults++;
  }
}
print "$count samples, $faults faults\n";
exit($faults > 0);
